#include "program_fixture.h"

#include "platform/adapters/posix/posix_file_system.h"
#include "study/flashcard_store.h"

namespace tessary {
namespace {

using testing::Test;

using Pages = std::vector<JournalEntry>;
using Cards = std::vector<Flashcard>;

TEST_F(ProgramTest, WrongUsageAndFailuresAreToldApart) {
    const std::string page = addPage("Cells");
    struct Case {
        std::vector<std::string> arguments;
        int code;
        std::string says;
    };
    const std::vector<Case> cases{
        {{"pages", "add"}, 2, "--title"},
        {{"nonsense"}, 2, "nonsense"},
        {{"pages", "list", "--wrong"}, 2, "--wrong"},
        {{"pages", "show", "00000000-0000-4000-8000-000000000000"}, 1, "There is no page"},
        {{"pages", "show", ""}, 1, "There is no page"},
        {{"pages", "edit", page}, 2, "Nothing was given"},
        {{"pages", "add", "--title", "A", "--parent", "gone"}, 1, "There is no page \"gone\""},
        {{"pages", "add", "--title", "A", "--body-file", "/nowhere/x.md"}, 1, "/nowhere/x.md"},
        {{"pages", "edit", page, "--parent", page}, 1, ""},
        {{"pages", "import", "/nowhere"}, 1, "/nowhere"},
        {{"cards", "rate", page, "great"}, 2, "great"},
        {{"cards", "add", page, "--kind", "cloze", "--front", "no blank", "--back", "x"}, 1, "blank"},
        {{"cards", "add", page, "--front", "Q"}, 1, "--back"},
        {{"cards", "add", page, "--kind", "multipleChoice", "--front", "Q", "--option", "a", "--option", "b",
          "--correct", "2"},
         1,
         "right option"},
        {{"cards", "import", page, "/nowhere.txt"}, 1, "Couldn't read that file."},
        {{"trash", "empty"}, 2, "This permanently deletes everything in the Trash. This cannot be undone."},
        {{"settings", "get", "flashcards.newPerDya"}, 1, "Did you mean \"flashcards.newPerDay\"?"},
        {{"settings", "set", "flashcards.newPerDay", "many"}, 1, "whole number"},
        {{"settings", "set", "flashcards.newPerDay", "-1"}, 1, "0 or more"},
        {{"settings", "set", "sortOrder", "up"}, 1, "newest or oldest"},
        {{"export", "json", (home / "Notara" / "entries.json").string()}, 1, "the library's own folder"},
        {{"--now", "yesterday", "pages", "list"}, 2, "yesterday"},
        {{"pages", "add", "--title", "bad \xFF byte"}, 2, "UTF-8"},
    };
    for (const Case& each : cases) {
        const auto before = libraryFiles();
        std::vector<std::string> arguments = each.arguments;
        arguments.push_back("--json");
        const Result result = run(arguments);
        EXPECT_EQ(result.code, each.code) << each.says << result.out << result.err;
        EXPECT_NE(result.err.find(each.says), std::string::npos) << result.err;
        EXPECT_TRUE(result.out.starts_with("{\"error\":\"")) << result.out;
        EXPECT_EQ(result.out.find('\n'), result.out.size() - 1) << "one document";
        EXPECT_EQ(before.at((home / "Notara" / "entries.json").string()), content("Notara/entries.json"));
    }
}

TEST_F(ProgramTest, WithoutACommandItSaysWhatThereIs) {
    const Result nothing = runBare({});
    EXPECT_EQ(nothing.code, 2);
    EXPECT_NE(nothing.err.find("review"), std::string::npos);
    const Result help = runBare({"cards", "--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.out.find("from-notes"), std::string::npos);
}

TEST_F(ProgramTest, AHomeMustBeAFolderThatIsThere) {
    write("file", "x");
    EXPECT_EQ(runBare({"--home", (home / "missing").string(), "pages", "list"}).code, 1);
    EXPECT_FALSE(std::filesystem::exists(home / "missing"));
    EXPECT_EQ(runBare({"pages", "list", "--home", (home / "file").string()}).code, 1);
    EXPECT_EQ(runBare({"pages", "list"}).code, 1) << "neither HOME nor a home";
    environment["TESSARY_HOME"] = home.string();
    EXPECT_EQ(runBare({"pages", "add", "--title", "T"}).code, 0);
    EXPECT_NE(content("Notara/entries.json").find("\"T\""), std::string::npos);
}

TEST_F(ProgramTest, TheDesktopsPlacesAreUsedWithoutAHome) {
    environment["HOME"] = home.string();
    write(".config/user-dirs.dirs", "# x\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
    ASSERT_EQ(runBare({"settings", "set", "autoBackup", "on"}).code, 0);
    ASSERT_EQ(runBare({"--now", "2026-11-21T12:00:00Z", "pages", "add", "--title", "T"}).code, 0);
    EXPECT_TRUE(std::filesystem::exists(home / ".local/share/Notara/entries.json"));
    EXPECT_TRUE(std::filesystem::exists(home / ".config/Notara/settings.ini"));
    EXPECT_TRUE(std::filesystem::exists(home / "Dokumente/Tessary Backups/Tessary-2026-11-21.json"));
    environment["XDG_DATA_HOME"] = (home / "data").string();
    EXPECT_EQ(runBare({"pages", "add", "--title", "U"}).code, 0);
    EXPECT_TRUE(std::filesystem::exists(home / "data/Notara/entries.json"));
}

TEST_F(ProgramTest, TextsArriveAsTheyWereTyped) {
    for (const std::string text :
         {"[a, b]", "[x]", "-5", "--json", "", " spaced ", "a,b", "\"q\" \\n", "Prüfung 🎓", "{{x}}"}) {
        const auto page = json<JournalEntry>({"pages", "add", "--title=" + text, "--body", "x" + text});
        EXPECT_EQ(page.title, text);
        EXPECT_EQ(page.body, "x" + text);
        const auto card = json<Flashcard>({"cards", "add", page.id.toString(), "--front", "q", "--back=" + text + "."});
        EXPECT_EQ(card.back, text + ".");
    }
    const auto choice = json<Flashcard>({"cards", "add", addPage("P"), "--kind", "multipleChoice", "--front", "[Q]",
                                         "--option", "[1, 2]", "--option", "-3", "--correct", "1"});
    EXPECT_EQ(choice.front, "[Q]");
    EXPECT_EQ(choice.options, (std::vector<std::string>{"[1, 2]", "-3"}));
    EXPECT_EQ(choice.back, "-3");
    const auto several = json<Flashcard>({"cards", "add", choice.pageID.toString(), "--kind", "multipleChoice",
                                          "--front", "Q", "--option", "a", "b", "c", "--correct", "2"});
    EXPECT_EQ(several.options, (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(ProgramTest, AnyUnambiguousPrefixNamesARecord) {
    write("Notara/entries.json",
          R"([{"id":"AB000000-0000-4000-8000-000000000001","title":"One","body":"","date":0},)"
          R"({"id":"AB000000-0000-4000-8000-000000000002","title":"Two","body":"","date":0},)"
          R"({"id":"CD000000-0000-4000-8000-000000000001","title":"Three","body":"","date":0}])");
    EXPECT_EQ(json<JournalEntry>({"pages", "show", "c"}).title, "Three");
    EXPECT_EQ(json<JournalEntry>({"pages", "show", "ab000000-0000-4000-8000-000000000002"}).title, "Two");
    const Result ambiguous = run({"pages", "show", "AB0"});
    EXPECT_EQ(ambiguous.code, 1);
    EXPECT_NE(ambiguous.err.find("One"), std::string::npos);
    EXPECT_NE(ambiguous.err.find("Two"), std::string::npos);
}

TEST_F(ProgramTest, PagesAreMovedEditedAndBroughtBack) {
    const std::string notebook = json<Notebook>({"notebooks", "add", "Biology"}).id.toString();
    const std::string parent =
        json<JournalEntry>({"pages", "add", "--title", "Cells", "--notebook", notebook, "--tags", "a, b,,a"})
            .id.toString();
    const auto child = json<JournalEntry>({"pages", "add", "--title", "Nucleus", "--parent", parent});
    EXPECT_EQ(child.notebookID->toString(), notebook);
    EXPECT_EQ(json<JournalEntry>({"pages", "show", parent}).tags, (std::vector<std::string>{"a", "b"}));

    const auto edited = json<JournalEntry>({"pages", "edit", child.id.toString(), "--title", "The nucleus",
                                            "--favorite", "yes", "--archive", "yes", "--parent", "none"});
    EXPECT_EQ(edited.title, "The nucleus");
    EXPECT_FALSE(edited.parentID);
    EXPECT_TRUE(edited.updatedAt);
    EXPECT_EQ(json<Pages>({"pages", "list"}).size(), 1U);
    EXPECT_EQ(json<Pages>({"pages", "list", "--archived", "--favorites"}).size(), 1U);
    EXPECT_EQ(json<Pages>({"pages", "search", "nucle", "the"}).size(), 1U);

    EXPECT_FALSE(json<JournalEntry>({"pages", "move", parent, "--loose"}).notebookID);
    EXPECT_EQ(json<Pages>({"pages", "list", "--loose"}).size(), 1U);
    EXPECT_EQ(run({"pages", "edit", child.id.toString(), "--parent", parent}).code, 0);
    EXPECT_NE(run({"pages", "delete", parent}).out.find("and 1 subpage to the trash"), std::string::npos);
    EXPECT_NE(run({"trash", "list"}).out.find("Deletes in 30 days"), std::string::npos);
    EXPECT_EQ(json<Pages>({"trash", "restore", parent}).size(), 2U);
    EXPECT_EQ(run({"pages", "delete", parent}).code, 0);
    EXPECT_EQ(run({"trash", "empty", "--yes"}).code, 0);
    EXPECT_TRUE(json<Pages>({"pages", "list", "--archived"}).empty());
    EXPECT_EQ(run({"notebooks", "delete", notebook}).code, 0);
    EXPECT_TRUE(json<std::vector<Notebook>>({"notebooks", "list"}).empty());
}

TEST_F(ProgramTest, NewPlainTextReplacesTheRichText) {
    write("Notara/entries.json",
          R"([{"id":"AB000000-0000-4000-8000-000000000001","title":"One","body":"old","bodyRTF":"e30=","date":0}])");
    EXPECT_TRUE(json<JournalEntry>({"pages", "edit", "AB", "--title", "T"}).bodyRTF);
    write("new.md", "\xEF\xBB\xBFnew");
    const auto page = json<JournalEntry>({"pages", "edit", "AB", "--body-file", (home / "new.md").string()});
    EXPECT_EQ(page.body, "new");
    EXPECT_FALSE(page.bodyRTF);
}

TEST_F(ProgramTest, ARatingIsKeptAndLimitsHold) {
    const std::string page = addPage("P");
    const std::string card = json<Flashcard>({"cards", "add", page, "--front", "Q", "--back", "A"}).id.toString();
    const Result preview = run({"cards", "preview", card, "--json"});
    EXPECT_TRUE(preview.out.starts_with("{\"again\":{\"label\":\"1m\",\"due\":")) << preview.out;
    const Result rated = run({"--json", "cards", "rate", card, "good"});
    EXPECT_NE(rated.out.find("\"phase\":\"learning\""), std::string::npos) << rated.out;
    EXPECT_NE(rated.out.find("\"suspendedAsLeech\":false"), std::string::npos) << rated.out;
    EXPECT_TRUE(json<Cards>({"cards", "list", "--due"}).empty());
    now = "2026-11-21T09:40:00Z";
    EXPECT_EQ(json<Cards>({"cards", "list", "--due"}).size(), 1U);
    EXPECT_EQ(json<FlashcardDeckStats>({"cards", "stats", page}).learning, 1);
    EXPECT_NE(content("Notara/Reviews/2026-11.jsonl").find("\"scheduler\":\"FSRS-5\""), std::string::npos);

    EXPECT_EQ(run({"cards", "suspend", card}).code, 0);
    EXPECT_TRUE(json<Cards>({"cards", "list", "--due"}).empty());
    EXPECT_EQ(run({"cards", "unsuspend", card}).code, 0);
    EXPECT_TRUE(json<Flashcard>({"cards", "flag", card}).flagged);
    EXPECT_FALSE(json<Flashcard>({"cards", "unflag", card}).flagged);
    EXPECT_EQ(json<Flashcard>({"cards", "edit", card, "--back", "B"}).memory.reps, 1);
    EXPECT_EQ(json<Flashcard>({"cards", "reset", card}).memory, freshMemory(*parseIso8601(now)));
    EXPECT_EQ(run({"cards", "reset", card, "--page", page}).code, 2);
    EXPECT_EQ(run({"pages", "delete", page}).code, 0);
    EXPECT_TRUE(json<Cards>({"cards", "list", "--due"}).empty()) << "its page is in the trash";
    EXPECT_EQ(run({"cards", "delete", card}).code, 0);
    EXPECT_TRUE(json<Cards>({"cards", "list"}).empty());
}

TEST_F(ProgramTest, DecksAndExportsComeBackEqual) {
    const std::string page = addPage("P", "Capital of France :: Paris\n\nA {{cell}} lives.\n");
    ASSERT_EQ(run({"cards", "from-notes", page}).code, 0);
    ASSERT_EQ(run({"cards", "add", page, "--kind", "multipleChoice", "--front", "Q", "--option", "a\tb", "--option",
                   "c", "--correct", "0"})
                  .code,
              0);
    const std::string file = (home / "deck.txt").string();
    ASSERT_EQ(run({"cards", "export", page, file}).code, 0);
    const std::string other = addPage("Other");
    write("latin", "caf\xE9\tx\n");
    EXPECT_NE(run({"cards", "import", other, (home / "latin").string()}).err.find("Couldn't read that file."),
              std::string::npos);
    ASSERT_EQ(run({"cards", "import", other, file}).code, 0);
    const Cards cards = json<Cards>({"cards", "list"});
    ASSERT_EQ(cards.size(), 6U);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(contentOf(cards[i]), contentOf(cards[i + 3]));

    ASSERT_EQ(run({"export", "json", home.string()}).code, 0);
    const std::string backup = (home / "Tessary Export.json").string();
    ASSERT_EQ(run({"pages", "delete", page}).code, 0);
    ASSERT_EQ(run({"trash", "empty", "--yes"}).code, 0);
    ASSERT_EQ(run({"import", "json", backup}).code, 0);
    EXPECT_EQ(json<Pages>({"pages", "list"}).size(), 2U);
    EXPECT_EQ(run({"export", "markdown", (home / "all.md").string()}).code, 0);
    EXPECT_NE(content("all.md").find("# P\n\nCapital of France :: Paris"), std::string::npos) << content("all.md");
}

TEST_F(ProgramTest, CardsFromNotesKeepTheirMemory) {
    const std::string page = addPage("P", "Capital of France :: Lyon\n");
    ASSERT_EQ(run({"cards", "from-notes", "--all"}).code, 0);
    const auto card = json<Cards>({"cards", "list"}).at(0);
    ASSERT_EQ(run({"cards", "rate", card.id.toString(), "easy"}).code, 0);
    ASSERT_EQ(run({"pages", "edit", page, "--body", "Capital of France :: Paris\nCapital of Spain :: Madrid\n"}).code,
              0);
    EXPECT_EQ(run({"cards", "from-notes", page, "--json"}).out, "{\"added\":1,\"updated\":1,\"unchanged\":0}\n");
    EXPECT_EQ(run({"cards", "from-notes", page, "--json"}).out, "{\"added\":0,\"updated\":0,\"unchanged\":2}\n");
    const auto cards = json<Cards>({"cards", "list"});
    EXPECT_EQ(cards.at(0).back, "Paris");
    EXPECT_EQ(cards.at(0).memory.phase, CardMemory::Phase::review);
    EXPECT_EQ(cards.size(), 2U);
}

TEST_F(ProgramTest, SettingsKeepTheirTypeAndGoBack) {
    EXPECT_EQ(run({"settings", "set", "flashcards.newPerDay", "5"}).out, "5\n");
    EXPECT_NE(run({"settings", "get", "flashcards.newPerDay", "--json"})
                  .out.find("\"value\":5,\"default\":20,\"isSet\":true"),
              std::string::npos);
    EXPECT_EQ(run({"settings", "set", "flashcards.shuffle", "no"}).out, "off\n");
    EXPECT_EQ(run({"settings", "unset", "flashcards.newPerDay"}).out, "20\n");
    EXPECT_NE(run({"settings", "list"}).out.find("flashcards.shuffle = off\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(home / "Notara")) << "settings are no launch";
}

TEST_F(ProgramTest, ALibraryInUseIsReadButNeverWritten) {
    const std::string page = addPage("P");
    write(
        "Notara/trash.json",
        R"([{"entry":{"id":"AB000000-0000-4000-8000-000000000001","title":"Old","body":"","date":0},"deletedAt":0}])");
    PosixFileSystem files;
    const auto lock = files.lock(home / "Notara");
    ASSERT_TRUE(lock);
    const auto before = libraryFiles();
    EXPECT_EQ(json<Pages>({"pages", "list"}).size(), 1U);
    EXPECT_EQ(run({"trash", "list"}).code, 0);
    EXPECT_EQ(run({"verify"}).code, 0);
    EXPECT_EQ(run({"export", "json", (home / "out.json").string()}).code, 0);
    for (const std::vector<std::string>& change : {std::vector<std::string>{"pages", "delete", page},
                                                   {"trash", "empty", "--yes"},
                                                   {"review"},
                                                   {"verify", "--repair"}}) {
        const Result refused = run(change);
        EXPECT_EQ(refused.code, 1);
        EXPECT_NE(refused.err.find(std::to_string(getpid())), std::string::npos) << refused.err;
    }
    EXPECT_EQ(libraryFiles(), before);
}

TEST_F(ProgramTest, AnUnreadableFileIsToldAndPreserved) {
    write("Notara/entries.json", "[{\"id\":");
    write("Notara/audio/voice.m4a", "x");
    EXPECT_EQ(run({"verify"}).code, 1);
    EXPECT_EQ(libraryFiles().size(), 2U) << "verify only reads";
    const Result added = run({"pages", "add", "--title", "T"});
    EXPECT_EQ(added.code, 0);
    EXPECT_NE(added.err.find("could not be decoded — copy preserved at "), std::string::npos) << added.err;
    const auto files = libraryFiles();
    const auto copy = std::ranges::find_if(
        files, [](const auto& f) { return f.first.find("entries-corrupt-") != std::string::npos; });
    ASSERT_NE(copy, files.end());
    EXPECT_EQ(copy->second, "[{\"id\":");
    EXPECT_TRUE(std::filesystem::exists(home / "Notara/audio/voice.m4a"));
}

TEST_F(ProgramTest, NothingIsCalledDoneThatWasNotSaved) {
    ASSERT_EQ(run({"pages", "list"}).code, 0);
    std::filesystem::create_directory(home / "Notara/entries.json");
    const Result added = run({"pages", "add", "--title", "T", "--json"});
    EXPECT_EQ(added.code, 1);
    EXPECT_TRUE(added.out.starts_with("{\"error\":\"Not everything could be saved. entries.json")) << added.out;
    EXPECT_EQ(run({"pages", "list"}).out, "No pages here.\n") << "a library that can't be read is not called empty";
}

TEST_F(ProgramTest, TheContainerOfSandboxedDaysIsTakenOverOnce) {
    const std::string container = "Library/Containers/com.vorlek.Notara/Data/Library/Application Support/Notara/";
    write(container + "entries.json",
          R"([{"id":"AB000000-0000-4000-8000-000000000001","title":"Old","body":"","date":0}])");
    environment["APP_SANDBOX_CONTAINER_ID"] = "com.vorlek.Notara";
    EXPECT_TRUE(json<Pages>({"pages", "list"}).empty()) << "still sandboxed";
    environment.clear();
    EXPECT_EQ(json<Pages>({"pages", "list"}).size(), 1U);
    ASSERT_EQ(run({"pages", "delete", "AB"}).code, 0);
    EXPECT_TRUE(json<Pages>({"pages", "list"}).empty());
}

TEST_F(ProgramTest, NotesCannotSteerTheTerminal) {
    const std::string page = addPage("a\x1b[2Jb\nc", "x\x1b]0;evil\x07y");
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"pages", "list"}, {"pages", "show", page}}) {
        const std::string out = run(command).out;
        EXPECT_EQ(out.find('\x1b'), std::string::npos) << out;
        EXPECT_EQ(out.find('\x07'), std::string::npos) << out;
    }
}

}  // namespace
}  // namespace tessary
