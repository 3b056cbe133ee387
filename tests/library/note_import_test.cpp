#include "library/note_import.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "library/store_fixture.h"
#include "platform/adapters/posix/posix_file_system.h"
#include "platform/adapters/yaml/yaml_front_matter.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

using Texts = std::vector<std::string>;

class NoteImportTest : public StoreTest {
protected:
    NoteImportReport import(const std::vector<fs::path>& paths, const NoteImportOptions& options = {}) {
        return importNotes(*store, paths, services(), YamlFrontMatter(), options);
    }

    const JournalEntry& only(const std::string& title) const {
        static const JournalEntry kMissing;
        for (const JournalEntry& entry : store->entries()) {
            if (entry.title == title) return entry;
        }
        ADD_FAILURE() << "no page " << title;
        return kMissing;
    }

    /// "Notebook / Page / Subpage" for each page, in order.
    Texts places() const {
        Texts result;
        for (const JournalEntry& entry : store->entries()) {
            std::string place = entry.title;
            for (const JournalEntry* at = &entry; at->parentID;) {
                at = store->entries().find(*at->parentID);
                place = at->title + " / " + place;
            }
            const Notebook* const notebook = entry.notebookID ? store->notebooks().find(*entry.notebookID) : nullptr;
            result.push_back((notebook == nullptr ? "-" : notebook->name) + " / " + place);
        }
        return result;
    }

    static Texts texts(const NoteImportReport& report) {
        Texts result;
        for (const NoteProblem& problem : report.problems) result.push_back(problem.text);
        return result;
    }

    std::unique_ptr<JournalStore> store = open();
};

TEST_F(NoteImportTest, FoldersBecomeANotebookAndPages) {
    for (const char* const path : {"Intro.md", "Cells/Cells.markdown", "Cells/Nucleus.md", "Cells/Parts/Membrane.TXT",
                                   "Energy.md", "Energy/ATP.md", "Genes/DNA.md", "Genes/index.md", "Life/README.md",
                                   "Empty/Deep/photo.png", "list.pdf", ".hidden.md", ".git/x.md"}) {
        put(fs::path("/in/Biology") / path, "Text of " + std::string(path));
    }
    const NoteImportReport report = import({"/in/Biology/"});
    EXPECT_EQ(places(), (Texts{"Biology / Cells", "Biology / Cells / Nucleus", "Biology / Cells / Parts",
                               "Biology / Cells / Parts / Membrane", "Biology / Energy", "Biology / Energy / ATP",
                               "Biology / Genes", "Biology / Genes / DNA", "Biology / Intro", "Biology / Life"}));
    EXPECT_EQ(only("Cells").body, "Text of Cells/Cells.markdown");
    EXPECT_EQ(only("Parts").body, "");
    EXPECT_EQ(only("Energy").body, "Text of Energy.md");
    EXPECT_EQ(only("Genes").body, "Text of Genes/index.md");
    EXPECT_EQ(report.added.size(), 10U);
    EXPECT_EQ(report.notebooks, std::vector<NotebookId>{store->notebooks()[0].id});
    EXPECT_EQ(texts(report), Texts{});
    EXPECT_FALSE(report.cancelled);
}

TEST_F(NoteImportTest, NotesGoWhereTheUserWants) {
    put("/in/Biology/Cells.md", "a");
    put("/in/loose.txt", "# no heading\n![a](b.png)\n");
    put("/in/nothing/a.pdf", "");
    const NotebookId biology = store->addNotebook("Biology");
    EXPECT_TRUE(import({"/in/Biology", "/in/loose.txt", "/in/nothing"}).notebooks.empty());
    EXPECT_EQ(places(), (Texts{"Biology / Cells", "- / loose"}));
    EXPECT_EQ(only("Cells").notebookID, biology);
    EXPECT_EQ(only("loose").body, "# no heading\n![a](b.png)");
    const NotebookId other = store->addNotebook("Other");
    const NoteImportOptions intoOther{.notebook = other, .progress = {}, .stop = {}};
    EXPECT_EQ(import({"/in/Biology", "/in/loose.txt"}, intoOther).added.size(), 2U);
    EXPECT_EQ(places(), (Texts{"Biology / Cells", "- / loose", "Other / Cells", "Other / loose"}));
    EXPECT_EQ(store->notebooks().size(), 2U);
}

TEST_F(NoteImportTest, WhatCannotBeTakenIsAProblemAndStopsNothing) {
    put("/in/N/bad.md", "caf\xE9");
    put("/in/N/binary.txt", std::string("a\0b", 3));
    put("/in/N/good.md", "\xEF\xBB\xBF# Good\r\n\r\none\rtwo\r\n");
    put("/in/N/huge.md", std::string(16UL * 1024 * 1024 + 1, 'x'));
    put("/in/N/largest.md", std::string(16UL * 1024 * 1024, 'x'));
    put("/in/M/Sub/bad.md", "caf\xE9");
    put("/in/image.png", "x");
    std::string deep = "/in/N";
    for (int i = 0; i < 65; ++i) deep += "/d";
    put(deep + "/lost.md", "x");
    const NoteImportReport report = import({"/in/none.md", "/in/image.png", "/in/N", "/in/M", ""});
    EXPECT_EQ(texts(report),
              (Texts{"\"none.md\" does not exist.",
                     "\"image.png\" is no note: only .md, .markdown and .txt can be "
                     "imported.",
                     "\"d\" lies too deep inside other folders.", "\"\" does not exist.",
                     "\"bad.md\" is not UTF-8 text.", "\"binary.txt\" holds NUL bytes, so it is no text.",
                     "\"huge.md\" is larger than 16 MiB.", "\"bad.md\" is not UTF-8 text."}));
    EXPECT_EQ(report.problems[4].path, "/in/N/bad.md");
    EXPECT_EQ(places(), (Texts{"N / Good", "N / largest"}));
    EXPECT_EQ(only("Good").body, "one\ntwo");
}

TEST_F(NoteImportTest, PagesKeepDatesAndTags) {
    put("/in/dated.md", "---\ndate: 2024-05-01\nupdated: 2024-06-01\ntags: a, b\n---\nText");
    put("/in/plain.md", "Text");
    put("/in/wrong.md", "---\ndate: soon\n---\nText");
    const NoteImportReport report = import({"/in/dated.md", "/in/plain.md", "/in/wrong.md"});
    EXPECT_EQ(only("dated").date, parseIso8601("2024-04-30T22:00:00Z"));
    EXPECT_EQ(only("dated").updatedAt, parseIso8601("2024-05-31T22:00:00Z"));
    EXPECT_EQ(only("dated").tags, (Texts{"a", "b"}));
    EXPECT_EQ(only("plain").date, files.info("/in/plain.md")->modified);
    EXPECT_EQ(only("plain").updatedAt, std::nullopt);
    EXPECT_EQ(only("wrong").date, files.info("/in/wrong.md")->modified);
    EXPECT_EQ(texts(report), Texts{"\"wrong.md\" has a date that cannot be read: date: soon."});
}

TEST_F(NoteImportTest, ImagesComeAlong) {
    put("/in/N/a.md",
        "![one](pics/my%20pic.png \"t\") ![[deep.JPG|30]] ![](pics/my%20pic.png) ![[b]]\n"
        "<img src=\"att.svg\"> ![web](https://example.org/x.png) ![d](data:image/png;base64,AA==)");
    put("/in/N/Sub/b.md", "![](../pics/my%20pic.png) ![other](pic.png) ![[pics/my pic.png]]");
    put("/in/N/pics/my pic.png", "one");
    put("/in/N/x/y/deep.jpg", "two");
    put("/in/N/assets/att.svg", "three");
    put("/in/N/Sub/pic.png", "four");
    put("/library/images/pic.png", "another picture");
    const NoteImportReport report = import({"/in/N"});
    EXPECT_EQ(texts(report), Texts{});
    EXPECT_EQ(only("a").body,
              "![one](<my pic.png> \"t\") ![[deep.jpg|30]] ![](<my pic.png>) ![[b]]\n"
              "<img src=\"att.svg\"> ![web](https://example.org/x.png) ![d](data:image/png;base64,AA==)");
    EXPECT_EQ(only("a").imageFilenames, (Texts{"my pic.png", "deep.jpg", "att.svg"}));
    EXPECT_EQ(only("b").body, "![](<my pic.png>) ![other](pic-2.png) ![[my pic.png]]");
    EXPECT_EQ(only("b").imageFilenames, (Texts{"my pic.png", "pic-2.png"}));
    EXPECT_EQ(report.images, 4U);
    EXPECT_EQ(names("/library/images", ""), (Texts{"att.svg", "deep.jpg", "my pic.png", "pic-2.png", "pic.png"}));
    EXPECT_EQ(content("/library/images/pic-2.png"), "four");
}

TEST_F(NoteImportTest, ImagesOutsideTheImportedFolderStayThere) {
    put("/in/secret.png", "s");
    put("/in/N/note.txt", "x");
    const std::string body =
        "![](../secret.png) ![](/in/secret.png) ![](file:///in/secret.png) ![[../secret.png]] "
        "![](a/../../secret.png) ![](%2e%2e/secret.png) ![](../../etc/passwd) ![](note.txt) "
        "![](gone.png) ![[gone.png]] ![](none.png%00.txt)";
    put("/in/N/a.md", body);
    const NoteImportReport report = import({"/in/N/a.md"});
    EXPECT_EQ(only("a").body, body);
    EXPECT_EQ(only("a").imageFilenames, Texts{});
    EXPECT_EQ(names("/library/images", ""), Texts{});
    ASSERT_EQ(report.problems.size(), 8U);
    const auto isOutside = [](const NoteProblem& problem) { return problem.text.contains("outside"); };
    EXPECT_EQ(std::ranges::count_if(report.problems, isOutside), 5);
    EXPECT_EQ(report.problems[0].text,
              "\"a.md\" shows the image \"../secret.png\", which lies outside the imported folder and was not copied.");
    EXPECT_EQ(report.problems[6].text, "\"a.md\" shows the image \"gone.png\", which was not found.");
}

TEST_F(NoteImportTest, ASecondImportAddsOnlyWhatIsNew) {
    put("/in/N/Cells/index.md", "# The cell\n![](p.png)");
    put("/in/N/Cells/Parts/Core.md", "core");
    put("/in/N/Cells/p.png", "p");
    EXPECT_EQ(import({"/in/N"}).added.size(), 3U);
    const NoteImportReport again = import({"/in/N"});
    EXPECT_EQ(again.added.size(), 0U);
    EXPECT_EQ(again.alreadyThere, 2U);
    EXPECT_EQ(again.images, 0U);
    EXPECT_TRUE(again.notebooks.empty());
    put("/in/N/Cells/Parts/New.md", "core");
    put("/in/N/Core.md", "core");
    EXPECT_EQ(import({"/in/N"}).added.size(), 2U);
    EXPECT_EQ(places(), (Texts{"N / The cell", "N / The cell / Parts", "N / The cell / Parts / Core",
                               "N / The cell / Parts / New", "N / Core"}));
    EXPECT_EQ(names("/library/images", ""), Texts{"p.png"});
    ASSERT_TRUE(store->deletePage(only("New").id));
    EXPECT_EQ(import({"/in/N"}).added.size(), 1U);

    JournalEntry parts = only("Parts");
    parts.body = "My own words";
    ASSERT_TRUE(store->updatePage(parts));
    EXPECT_EQ(import({"/in/N"}).added.size(), 0U);
}

TEST_F(NoteImportTest, PagesWhoseParentsFormALoopAreNoObstacle) {
    JournalEntry first = page("a");
    JournalEntry second = page("b");
    first.id = PageId{ids.next()};
    second.id = PageId{ids.next()};
    first.parentID = second.id;
    second.parentID = first.id;
    putRecords("/library/entries.json", std::vector{first, second});
    store = open();
    put("/in/a.md", "text");
    EXPECT_EQ(import({"/in/a.md"}).added.size(), 1U);
    EXPECT_EQ(import({"/in/a.md"}).alreadyThere, 1U);
}

TEST_F(NoteImportTest, ItTellsHowFarItIsAndCanBeStopped) {
    for (const char* const name : {"a", "b", "c"}) put(fs::path("/in/N") / (std::string(name) + ".md"), name);
    std::stop_source stop;
    Texts seen;
    NoteImportOptions options;
    options.stop = stop.get_token();
    options.progress = [&](const NoteImportProgress& progress) {
        seen.push_back(std::to_string(progress.done) + "/" + std::to_string(progress.total) + " " +
                       progress.file.string());
        if (progress.done == 2) stop.request_stop();
    };
    const NoteImportReport report = import({"/in/N"}, options);
    EXPECT_TRUE(report.cancelled);
    EXPECT_EQ(seen, (Texts{"1/3 /in/N/a.md", "2/3 /in/N/b.md"}));
    EXPECT_EQ(places(), (Texts{"N / a", "N / b"}));
    EXPECT_TRUE(import({"/in/N"}, options).cancelled);

    options.stop = {};
    options.progress = [](const NoteImportProgress&) { throw std::runtime_error("no terminal"); };
    const NoteImportReport thrown = import({"/in/N/c.md"}, options);
    EXPECT_EQ(thrown.added.size(), 1U);
    EXPECT_EQ(texts(thrown), Texts{"\"c.md\" could not be imported: no terminal."});
}

TEST_F(NoteImportTest, NothingComesIntoALibraryThatAnotherProgramHolds) {
    put("/in/a.md", "a");
    store = open(StoreAccess::readOnly);
    EXPECT_EQ(texts(import({"/in/a.md"})),
              Texts{"\"a.md\" cannot be imported while the library is open in another program."});
    EXPECT_TRUE(store->entries().empty());
}

TEST_F(NoteImportTest, LinksOfTheDiskLeadNowhereElse) {
    std::string pattern = (fs::temp_directory_path() / "tessary-import-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    const fs::path base = pattern;
    PosixFileSystem disk;
    const auto write = [&](const fs::path& path, const std::string& text) {
        ASSERT_TRUE(disk.createFolders((base / path).parent_path()));
        ASSERT_TRUE(writeAtomically(disk, base / path, text));
    };
    write("outside/secret.png", "s");
    write("outside/note.md", "![](secret.png)");
    write("N/a.md", "![](link.png) ![](out/secret.png) ![](inner.png) ![[secret.png]]");
    write("N/real.png", "r");
    fs::create_symlink("../outside/secret.png", base / "N/link.png");
    fs::create_symlink("../outside", base / "N/out");
    fs::create_symlink("real.png", base / "N/inner.png");
    fs::create_symlink(".", base / "N/loop");
    fs::create_symlink("../outside/note.md", base / "N/linked.md");
    fs::create_symlink("nowhere", base / "N/dangling.md");
    fs::create_symlink("N", base / "Notes");

    StoreServices services{disk, loop, clock, calendar, ids, settings, console, notifications};
    ASSERT_TRUE(disk.createFolders(base / "library"));
    JournalStore onDisk({base / "library"}, services, queue, StoreAccess::readWrite);
    const NoteImportReport report = importNotes(onDisk, {base / "Notes"}, services, YamlFrontMatter());
    ASSERT_EQ(onDisk.entries().size(), 2U);
    EXPECT_EQ(onDisk.notebooks()[0].name, "Notes");
    EXPECT_EQ(onDisk.entries()[0].title, "a");
    EXPECT_EQ(onDisk.entries()[0].imageFilenames, Texts{"inner.png"});
    EXPECT_EQ(onDisk.entries()[1].body, "![](secret.png)");
    const std::string outside = ", which lies outside the imported folder and was not copied.";
    EXPECT_EQ(texts(report), (Texts{"\"dangling.md\" is not a file that can be read.",
                                    "\"a.md\" shows the image \"link.png\"" + outside,
                                    "\"a.md\" shows the image \"out/secret.png\"" + outside,
                                    "\"a.md\" shows the image \"secret.png\", which was not found.",
                                    "\"linked.md\" shows the image \"secret.png\", which was not found."}));
    fs::remove_all(base);
}

}  // namespace
}  // namespace tessary
