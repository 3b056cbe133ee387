#include "library/library_exchange.h"

#include <gtest/gtest.h>

#include "platform/adapters/icu/icu_calendar.h"
#include "platform/adapters/ini/ini_settings.h"
#include "platform/atomic_write.h"
#include "support/fakes.h"
#include "support/memory_file_system.h"
#include "support/virtual_loop.h"

namespace tessary {
namespace {

class LibraryExchangeTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(files.createFolders("/library"));
        ASSERT_TRUE(files.createFolders("/out"));
    }

    JournalStore makeStore() { return JournalStore({"/library"}, services, queue, StoreAccess::readWrite); }

    PageId nextId() { return PageId{ids.next()}; }

    JournalEntry page(std::string title, std::optional<PageId> parent = {}) {
        JournalEntry entry;
        entry.id = nextId();
        entry.title = std::move(title);
        entry.date = clock.now();
        entry.parentID = parent;
        return entry;
    }

    void writePages(const std::vector<JournalEntry>& pages, JsonFormat format = kExportFormat) {
        ASSERT_TRUE(writeAtomically(files, kFile, encodeJson(pages, format).value()));
    }

    static inline const std::filesystem::path kFile = "/out/pages.json";

    MemoryFileSystem files;
    VirtualLoop loop;
    ManualClock clock{Date{800'000'000}};
    IcuCalendar calendar{"Europe/Berlin"};
    SequentialIds ids;
    IniSettings settings{files, "/settings.ini"};
    RecordingConsole console;
    NotificationCenter notifications;
    InlineQueue queue;
    StoreServices services{files, loop, clock, calendar, ids, settings, console, notifications};
};

TEST_F(LibraryExchangeTest, AnEmptyLibraryHasNothingToExport) {
    const JournalStore store = makeStore();
    EXPECT_EQ(exportedJson(store).error(), kNothingToExport);
    EXPECT_EQ(exportedMarkdown(store).error(), kNothingToExport);
    EXPECT_TRUE(writeAutoBackup(store, "/documents", services)) << "it needs no backup";
    EXPECT_FALSE(exists(files, "/documents"));
}

TEST_F(LibraryExchangeTest, MarkdownPutsSubpagesAfterTheirParents) {
    JournalStore store = makeStore();
    JournalEntry first = page("First");
    first.tags = {"a", "b"};
    first.notebookID = store.addNotebook("Physics");
    first.body = "One\n\nTwo\n";
    const PageId parent = store.addPage(first).value();
    ASSERT_TRUE(store.addPage(page("")));
    ASSERT_TRUE(store.addPage(page("Below", parent)));
    EXPECT_EQ(exportedMarkdown(store).value(),
              "# First\nTags: a, b\nNotebook: Physics\n\nOne\n\nTwo\n\n"
              "# Below\nNotebook: Physics\n\n"
              "# Untitled\n");
}

TEST_F(LibraryExchangeTest, ALoopOfParentsLosesNoPage) {
    std::vector<JournalEntry> pages{page("A"), page("B"), page("C"), page("Self")};
    pages[0].parentID = pages[1].id;
    pages[1].parentID = pages[0].id;
    pages[2].parentID = pages[1].id;
    pages[3].parentID = pages[3].id;
    writePages(pages, kLibraryFormat);
    ASSERT_TRUE(writeAtomically(files, "/library/entries.json", files.read(kFile).value()));
    EXPECT_EQ(exportedMarkdown(makeStore()).value(), "# A\n\n# B\n\n# C\n\n# Self\n");
}

TEST_F(LibraryExchangeTest, ImportReadsWhatExportWroteAndSkipsWhatIsThere) {
    JournalStore store = makeStore();
    const PageId parent = store.addPage(page("Parent")).value();
    const PageId child = store.addPage(page("Child", parent)).value();
    const RecordList<JournalEntry>::Snapshot before = store.entries().snapshot();
    ASSERT_TRUE(writeExport(kFile, exportedJson(store).value(), files, console));
    ASSERT_TRUE(store.deletePage(child));
    EXPECT_EQ(importJson(store, kFile, services).value().skipped, 2U);

    JournalStore other({"/other"}, services, queue, StoreAccess::readWrite);
    EXPECT_EQ(importJson(other, kFile, services).value().added, 2U);
    for (const auto& each : before) EXPECT_EQ(*other.entries().find(each->id), *each);
}

TEST_F(LibraryExchangeTest, ImportKeepsOnlyTiesThatLeadSomewhere) {
    JournalStore store = makeStore();
    const NotebookId notebook = store.addNotebook("Here");
    std::vector<JournalEntry> pages{page("Child"), page("Parent"), page("Orphan", nextId()), page("Lost")};
    pages[0].parentID = pages[1].id;
    pages[1].notebookID = notebook;
    pages[2].notebookID = notebook;
    pages[3].notebookID = NotebookId{ids.next()};
    writePages(pages, kLibraryFormat);
    EXPECT_EQ(importJson(store, kFile, services).value().added, 4U);
    EXPECT_EQ(store.entries().find(pages[0].id)->parentID, pages[1].id);
    EXPECT_EQ(store.entries().find(pages[0].id)->notebookID, notebook);
    EXPECT_EQ(store.entries().find(pages[2].id)->parentID, std::nullopt);
    EXPECT_EQ(store.entries().find(pages[2].id)->notebookID, notebook);
    EXPECT_EQ(store.entries().find(pages[3].id)->notebookID, std::nullopt);
    EXPECT_EQ(store.entries().find(pages[1].id)->date, pages[1].date);
}

TEST_F(LibraryExchangeTest, AFileThatCannotBeReadAddsNothing) {
    JournalStore store = makeStore();
    EXPECT_FALSE(importJson(store, "/out/missing.json", services));
    ASSERT_TRUE(writeAtomically(files, kFile, R"([{"id": 1}])"));
    EXPECT_FALSE(importJson(store, kFile, services));
    EXPECT_TRUE(store.entries().empty());
    ASSERT_EQ(console.lines().size(), 2U);
    for (const std::string& line : console.lines()) EXPECT_TRUE(line.starts_with("Notara: import failed — ")) << line;
}

TEST_F(LibraryExchangeTest, AFailedExportGoesToTheConsole) {
    files.failAfter(1, FileError::Kind::noSpace);
    EXPECT_FALSE(writeExport(kFile, "x", files, console));
    ASSERT_EQ(console.lines().size(), 1U);
    EXPECT_TRUE(console.lines()[0].starts_with("Notara: export failed — "));
}

TEST_F(LibraryExchangeTest, TheBackupOfADayIsReplaced) {
    JournalStore store = makeStore();
    const auto one = store.addPage(page("One"));
    ASSERT_TRUE(writeAutoBackup(store, "/documents", services));
    const auto two = store.addPage(page("Two"));
    ASSERT_TRUE(writeAutoBackup(store, "/documents", services));
    const std::string name = "Tessary-" + dayKey(calendar.civilTime(clock.now()).day) + ".json";
    EXPECT_EQ(files.list("/documents/Tessary Backups").value().size(), 1U);
    const std::string backup = files.read("/documents/Tessary Backups/" + name).value();
    EXPECT_EQ(backup, exportedJson(store).value());
    for (const auto& each : {one, two}) ASSERT_TRUE(store.deletePage(each.value()));
    ASSERT_TRUE(writeAutoBackup(store, "/documents", services));
    EXPECT_EQ(files.read("/documents/Tessary Backups/" + name).value(), backup) << "what is left of an emptied library";
}

TEST_F(LibraryExchangeTest, NoBackupOfALibraryThatCouldNotBeRead) {
    ASSERT_TRUE(writeAtomically(files, "/library/exams.json", "{"));
    JournalStore store = makeStore();
    ASSERT_TRUE(store.addPage(page("One")));
    EXPECT_FALSE(writeAutoBackup(store, "/documents", services));
    EXPECT_FALSE(exists(files, "/documents"));
}

}  // namespace
}  // namespace tessary
