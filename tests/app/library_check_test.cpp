#include "app/library_check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "app/library_repair.h"
#include "library/store_fixture.h"
#include "study/flashcard_store.h"

namespace tessary {
namespace {

using Kind = LibraryFinding::Kind;
using Severity = LibraryFinding::Severity;

PageId pageId(std::uint8_t number) { return PageId{Uuid{{number}}}; }
NotebookId notebookId(std::uint8_t number) { return NotebookId{Uuid{{number}}}; }

class LibraryCheckTest : public StoreTest {
protected:
    static JournalEntry entry(std::uint8_t number, std::optional<PageId> parent = {},
                              std::optional<NotebookId> notebook = {}) {
        JournalEntry made;
        made.id = pageId(number);
        made.title = "Page " + std::to_string(number);
        made.date = Date{1000.0 - number};
        made.parentID = parent;
        made.notebookID = notebook;
        return made;
    }
    static Notebook notebook(std::uint8_t number, const std::string& name) {
        Notebook made;
        made.id = notebookId(number);
        made.name = name;
        return made;
    }
    static Flashcard card(std::uint8_t number, PageId page, const std::string& front = "Q") {
        Flashcard made;
        made.id = CardId{Uuid{{number}}};
        made.pageID = page;
        made.front = front;
        made.memory.reps = number;
        return made;
    }
    static Exam exam(NotebookId notebook) {
        Exam made;
        made.id = ExamId{Uuid{{1}}};
        made.notebookID = notebook;
        made.title = "Final";
        return made;
    }
    void putCards(const std::vector<Flashcard>& cards) {
        FlashcardFile file;
        file.introduced["2026-11-20"] = 7;
        for (const Flashcard& each : cards) file.cards.push_back(std::make_shared<const Flashcard>(each));
        put(folders.flashcards(), *encodeJson(file));
    }
    std::vector<Flashcard> cards() {
        std::vector<Flashcard> found;
        const auto file = decodeJson<FlashcardFile>(content(folders.flashcards()), ReadContext{});
        for (const auto& each : file.value_or(FlashcardFile{}).cards) found.push_back(*each);
        return found;
    }
    std::vector<JournalEntry> entries() { return recordsIn<JournalEntry>(folders.entries()); }

    std::vector<LibraryFinding> check() {
        return checkLibrary(folders, files, {.now = clock.now(), .freshId = [this] { return ids.next(); }});
    }
    /// The kinds found, once each finding, sorted by name; "~" marks what a repair mends, "-" a note.
    static std::string kinds(const std::vector<LibraryFinding>& findings) {
        std::vector<std::string> words;
        for (const LibraryFinding& finding : findings) {
            words.push_back(std::string(enumName(finding.kind)) + (finding.repairable ? "~" : "") +
                            (finding.severity == Severity::note ? "-" : ""));
        }
        std::ranges::sort(words);
        return joinedWords(words);
    }
    static std::string joinedWords(const std::vector<std::string>& words) {
        std::string text;
        for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
        return text;
    }
    std::string textsOf(Kind kind) {
        std::string text;
        for (const LibraryFinding& finding : check()) {
            if (finding.kind == kind) text += finding.file + "| " + finding.text + "\n";
        }
        return text;
    }
    /// Every file below `folder` with its content.
    std::map<std::string, std::string> everything(const std::filesystem::path& folder) const {
        std::map<std::string, std::string> found;
        const auto children = files.list(folder);
        for (const DirectoryEntry& child : children.value_or(std::vector<DirectoryEntry>{})) {
            const std::filesystem::path path = folder / child.name;
            if (child.kind == FileKind::directory) {
                found.merge(everything(path));
            } else {
                found[path.string()] = content(path);
            }
        }
        return found;
    }
    RepairReport repair() {
        auto report = repairLibrary(folders, services());
        EXPECT_TRUE(report.has_value()) << report.error();
        return std::move(report).value_or(RepairReport{});
    }

    /// One library with every kind of trouble that a repair mends.
    void putBrokenLibrary() {
        JournalEntry twin = entry(1);
        twin.title = "Another page 1";
        putRecords<JournalEntry>(
            folders.entries(),
            {entry(1, {}, notebookId(1)), entry(1, {}, notebookId(1)), twin, entry(2, pageId(99)), entry(3, pageId(20)),
             entry(4, pageId(5)), entry(5, pageId(6)), entry(6, pageId(4)), entry(7, pageId(7)),
             entry(8, {}, notebookId(77)), entry(9, pageId(1)), entry(10, pageId(9), notebookId(2)), entry(11)});
        JournalEntry differs = entry(8);
        differs.body = "as it was";
        putRecords<TrashedEntry>(folders.trash(), {{entry(11), Date{50}},
                                                   {differs, Date{60}},
                                                   {entry(20), Date{70}},
                                                   {entry(20), Date{70}},
                                                   {entry(20), Date{80}}});
        putRecords<Notebook>(folders.notebooks(),
                             {notebook(1, "Physics"), notebook(2, "Art"), notebook(2, "Art"), notebook(2, "Music")});
        putCards({card(1, pageId(1)), card(2, pageId(20)), card(3, pageId(55)), card(4, pageId(55)),
                  card(1, pageId(1), "Other"), card(2, pageId(20))});
        putRecords<Exam>(folders.exams(), {exam(notebookId(1))});
    }
};

TEST_F(LibraryCheckTest, AnEmptyAndASoundLibraryHaveNoFindings) {
    EXPECT_EQ(kinds(check()), "");
    putRecords<JournalEntry>(folders.entries(), {entry(1, {}, notebookId(1)), entry(2, pageId(1), notebookId(1))});
    putRecords<Notebook>(folders.notebooks(), {notebook(1, "Physics")});
    putRecords<TrashedEntry>(folders.trash(), {{entry(3, pageId(99), notebookId(99)), Date{50}}});
    putCards({card(1, pageId(1)), card(2, pageId(3))});
    EXPECT_EQ(kinds(check()), "");
    const auto before = everything(folders.base);
    EXPECT_TRUE(repair().done.empty());
    EXPECT_EQ(everything(folders.base), before);
}

TEST_F(LibraryCheckTest, WhatCannotBeReadIsToldAndWhatDependsOnItLeftOut) {
    putBrokenLibrary();
    put(folders.images() / "unused.png", "x");
    put(folders.entries(), R"([{"id":"00000000-0000-4000-8000-000000000001","title":"A","body":""}])");
    const std::vector<LibraryFinding> findings = check();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings.front().text, "entries.json: [0].date: missing");
    EXPECT_EQ(kinds(findings),
              "duplicateId~ duplicateId~ duplicateId~ duplicateId~ duplicateId~ duplicateId~ undecodableFile");
    const std::string broken = content(folders.entries());
    EXPECT_EQ(kinds(repair().remaining), "undecodableFile");
    EXPECT_EQ(content(folders.entries()), broken);
}

TEST_F(LibraryCheckTest, FoldersInThePlaceOfFilesCannotBeRead) {
    ASSERT_TRUE(files.createFolders(folders.trash()));
    ASSERT_TRUE(files.createFolders(folders.flashcards()));
    EXPECT_EQ(kinds(check()), "unreadableFile unreadableFile");
}

TEST_F(LibraryCheckTest, MediaAreComparedWithTheirFolders) {
    JournalEntry page = entry(1);
    page.imageFilenames = {"here.png", "gone.png", "../secret.png"};
    page.imageStickers["sticker.png"] = {};
    page.audioClips.emplace_back().filename = "gone.m4a";
    page.pdfFilename = "here.pdf";
    page.pdfAttachments = {"gone.pdf"};
    putRecords<JournalEntry>(folders.entries(), {page});
    JournalEntry trashed = entry(2);
    trashed.imageFilenames = {"trashed.png"};
    putRecords<TrashedEntry>(folders.trash(), {{trashed, Date{50}}});
    Notebook covered = notebook(1, "Physics");
    covered.coverImageFilename = "here.png";
    putRecords<Notebook>(folders.notebooks(), {covered});
    for (const char* name : {"here.png", "sticker.png", "trashed.png", "spare.png", ".hidden"}) {
        put(folders.images() / name, "x");
    }
    put(folders.pdfs() / "here.pdf", "x");
    EXPECT_EQ(kinds(check()), "badMediaName missingMedia missingMedia missingMedia missingMedia unusedMedia-");
    EXPECT_EQ(textsOf(Kind::unusedMedia),
              "images/spare.png| images/spare.png is not used by anything in the library.\n");
    const std::string owner = "The page “Page 1” (01000000-0000-0000-0000-000000000000) uses the ";
    EXPECT_EQ(textsOf(Kind::missingMedia),
              "entries.json| " + owner + "image “gone.png”, which is not in the folder images.\n" + "entries.json| " +
                  owner + "PDF “gone.pdf”, which is not in the folder pdfs.\n" + "entries.json| " + owner +
                  "recording “gone.m4a”, which is not in the folder audio.\n" +
                  "notebooks.json| The notebook “Physics” (01000000-0000-0000-0000-000000000000) uses the cover "
                  "“here.png”, which is not in the folder covers.\n");
    const auto before = everything(folders.base);
    EXPECT_TRUE(repair().done.empty());
    EXPECT_EQ(everything(folders.base), before);
    put(folders.notebooks(), "{");
    EXPECT_EQ(textsOf(Kind::unusedMedia), "") << "an unread notebook may use it";
}

TEST_F(LibraryCheckTest, ExamsReviewLogsAndPreservedCopiesAreReported) {
    putRecords<JournalEntry>(folders.entries(), {entry(1)});
    Exam lost = exam(notebookId(9));
    lost.pageIDs = {pageId(1), pageId(2)};
    putRecords<Exam>(folders.exams(), {lost});
    const std::string line = *encodeJson(ReviewLogEntry{});
    put(folders.reviews() / "2026-10.jsonl", line + "\n\n{\"at\":1}\n" + line + "\n");
    put(folders.reviews() / "2026-11.jsonl", line + "\n{\"at\":");
    put(folders.base / "entries-corrupt-2026-11-01-120000.json", "{");
    EXPECT_EQ(kinds(check()), "damagedReviewLog- examPageMissing- examWithoutNotebook preservedCopy-");
    const std::string damage = textsOf(Kind::damagedReviewLog);
    EXPECT_TRUE(damage.starts_with("Reviews/2026-10.jsonl| Reviews/2026-10.jsonl, line 3: ")) << damage;
}

TEST_F(LibraryCheckTest, EveryKindOfBrokenTieIsFound) {
    putBrokenLibrary();
    EXPECT_EQ(kinds(check()),
              "cardWithoutPage~ duplicateId~ duplicateId~ duplicateId~ duplicateId~ duplicateId~ duplicateId~ "
              "duplicateId~ duplicateId~ duplicateId~ duplicateId~ pageWithoutNotebook~ parentLoop~ parentLoop~ "
              "subpageInOtherNotebook~ subpageInOtherNotebook~ subpageWithoutParent~ subpageWithoutParent~");
    EXPECT_EQ(textsOf(Kind::cardWithoutPage),
              "flashcards.json| The page of 2 cards is missing (37000000-0000-0000-0000-000000000000).\n");
    EXPECT_NE(textsOf(Kind::parentLoop).find("“Page 4”"), std::string::npos);
}

TEST_F(LibraryCheckTest, ARepairLosesNothingAndLeavesASoundLibrary) {
    putBrokenLibrary();
    const auto before = everything(folders.base);
    const RepairReport report = repair();
    EXPECT_EQ(kinds(report.remaining), "");
    EXPECT_EQ(kinds(check()), "");

    std::map<std::string, JournalEntry> byTitle;
    for (const JournalEntry& page : entries()) byTitle[page.title] = page;
    EXPECT_EQ(entries().size(), 13U);
    EXPECT_EQ(byTitle.size(), 13U);
    EXPECT_FALSE(byTitle.at("Another page 1").id == pageId(1));
    EXPECT_EQ(byTitle.at("Page 2").parentID, std::nullopt);
    EXPECT_EQ(byTitle.at("Page 3").parentID, std::nullopt);
    EXPECT_EQ(byTitle.at("Page 4").parentID, pageId(5)) << "only the oldest of a loop is freed";
    EXPECT_EQ(byTitle.at("Page 5").parentID, pageId(6));
    EXPECT_EQ(byTitle.at("Page 6").parentID, std::nullopt);
    EXPECT_EQ(byTitle.at("Page 7").parentID, std::nullopt);
    EXPECT_EQ(byTitle.at("Page 8").notebookID, std::nullopt);
    EXPECT_EQ(byTitle.at("Page 9").notebookID, notebookId(1));
    EXPECT_EQ(byTitle.at("Page 10").notebookID, notebookId(1));
    EXPECT_EQ(byTitle.at("Page 11"), entry(11));
    EXPECT_EQ(byTitle.at("Recovered cards").id, pageId(55));

    std::vector<std::string> trashed;
    std::set<PageId> identities;
    for (const TrashedEntry& each : recordsIn<TrashedEntry>(folders.trash())) {
        trashed.push_back(each.entry.title + each.entry.body);
        identities.insert(each.entry.id);
    }
    EXPECT_EQ(joinedWords(trashed), "Page 8as it was Page 20 Page 20");
    EXPECT_EQ(identities.size(), 3U);
    std::vector<std::string> names;
    for (const Notebook& each : recordsIn<Notebook>(folders.notebooks())) names.push_back(each.name);
    EXPECT_EQ(joinedWords(names), "Physics Art Music");
    ASSERT_EQ(cards().size(), 5U);
    EXPECT_EQ(cards().back().front, "Other");
    EXPECT_EQ(cards().back().memory.reps, 1);
    EXPECT_NE(content(folders.flashcards()).find(R"("2026-11-20":7)"), std::string::npos);

    const auto after = everything(folders.base);
    EXPECT_EQ(after.at("/library/exams.json"), before.at("/library/exams.json"));
    for (const char* name : {"entries", "trash", "notebooks", "flashcards"}) {
        EXPECT_EQ(after.at("/library/Backups/" + std::string(name) + "-before-repair-2026-11-21-103000.json"),
                  before.at("/library/" + std::string(name) + ".json"));
    }
    EXPECT_EQ(after.size(), before.size() + 4);
    EXPECT_TRUE(repair().done.empty());
    EXPECT_EQ(everything(folders.base), after);
}

// The pages and notebooks of a lost file may come back with a backup: nothing may take their place before.
TEST_F(LibraryCheckTest, ALostFileIsNotMendedOver) {
    putCards({card(1, pageId(1))});
    EXPECT_EQ(kinds(check()), "cardWithoutPage");
    EXPECT_EQ(kinds(repair().remaining), "cardWithoutPage");
    putRecords<JournalEntry>(folders.entries(), {entry(1, {}, notebookId(1))});
    EXPECT_EQ(kinds(check()), "pageWithoutNotebook");
    const auto before = everything(folders.base);
    EXPECT_EQ(kinds(repair().remaining), "pageWithoutNotebook");
    EXPECT_EQ(everything(folders.base), before);
}

TEST_F(LibraryCheckTest, AFailingRepairLeavesEachFileOldOrMended) {
    putBrokenLibrary();
    const auto before = everything(folders.base);
    ids = {};
    repair();
    const auto mended = everything(folders.base);
    int failures = 0;
    for (int step = 1;; ++step) {
        for (const auto& [path, bytes] : before) put(path, bytes);
        ids = {};
        files.failAfter(step, FileError::Kind::noSpace);
        const auto report = repairLibrary(folders, services());
        files.stopFailing();
        if (report) break;
        ++failures;
        EXPECT_NE(report.error().find(".json could not be repaired: "), std::string::npos) << report.error();
        for (const auto& [path, bytes] : before) {
            const std::string now = content(path);
            EXPECT_TRUE(now == bytes || now == mended.at(path)) << path << " at step " << step;
        }
        EXPECT_EQ(kinds(repair().remaining), "") << "at step " << step;
    }
    EXPECT_GT(failures, 20);
}

TEST_F(LibraryCheckTest, FindingsHaveAJsonForm) {
    const LibraryFinding finding{
        .kind = Kind::unusedMedia, .severity = Severity::note, .file = "images/a.png", .text = "x"};
    EXPECT_EQ(*encodeJson(finding),
              R"({"kind":"unusedMedia","severity":"note","file":"images/a.png","text":"x","repairable":false})");
}

}  // namespace
}  // namespace tessary
