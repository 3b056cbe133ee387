#include "library/store_fixture.h"

namespace tessary {
namespace {

using StoreFiles = StoreTest;

TEST_F(StoreFiles, UndecodableFilesArePreservedBeforeAnythingIsSavedOverThem) {
    const std::string broken = "[{\"id\": 7}]\xff";
    for (const auto& path : {folders.entries(), folders.notebooks(), folders.trash(), folders.exams()}) {
        put(path, broken);
    }
    const auto store = open();
    EXPECT_EQ(store->loadProblems().size(), 4U);
    std::vector<std::string> expected;
    for (const char* stem : {"entries", "notebooks", "trash", "exams"}) {
        const std::string copy = "/library/" + std::string(stem) + "-corrupt-2026-11-21-103000.json";
        EXPECT_EQ(content(copy), broken);
        expected.push_back("Notara: " + std::string(stem) + ".json could not be decoded — copy preserved at " + copy);
    }
    EXPECT_EQ(console.lines(), expected);
    ASSERT_TRUE(store->addPage(page("New")));
    ASSERT_TRUE(store->flushAndWait());
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).size(), 1U);
}

TEST_F(StoreFiles, TheSameCorruptContentIsCopiedOnceAndOtherContentBesideIt) {
    put(folders.entries(), "broken");
    open();
    clock.advance(60);
    open();
    EXPECT_EQ(names(folders.base, "entries-corrupt-").size(), 1U);
    EXPECT_EQ(console.lines().at(0), console.lines().at(1));
    put(folders.base / "entries-corrupt-2026-11-21-103100.json", "foreign");
    put(folders.entries(), "otherwise broken");
    open();
    EXPECT_EQ(content(folders.base / "entries-corrupt-2026-11-21-103100-2.json"), "otherwise broken");
}

TEST_F(StoreFiles, AFullDiskKeepsTheUndecodableFile) {
    put(folders.entries(), "broken");
    files.failAfter(1, FileError::Kind::noSpace);
    const auto store = open();
    ASSERT_TRUE(store->addPage(page("New")));
    EXPECT_FALSE(store->flushAndWait());
    EXPECT_EQ(content(folders.entries()), "broken");
    files.stopFailing();
    EXPECT_TRUE(store->flushAndWait());
    EXPECT_EQ(names(folders.base, "entries-corrupt-").size(), 1U);
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).size(), 1U);
}

TEST_F(StoreFiles, AnUnreadableFileIsNeverSavedOver) {
    ASSERT_TRUE(files.createFolders(folders.entries()));  // a folder cannot be read as a file
    const auto store = open();
    EXPECT_EQ(store->loadProblems().size(), 1U);
    ASSERT_TRUE(store->addPage(page("New")));
    EXPECT_FALSE(store->flushAndWait());
    ASSERT_TRUE(files.remove(folders.entries()));
    put(folders.entries(), "readable again");
    EXPECT_TRUE(store->flushAndWait());
    const auto copies = names(folders.base, "entries-corrupt-");
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(content(folders.base / copies.front()), "readable again");
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).size(), 1U);
}

TEST_F(StoreFiles, ReadOnlyAccessWritesNothing) {
    put(folders.entries(), "broken");
    TrashedEntry old;
    old.entry = page("Old");
    putRecords<TrashedEntry>(folders.trash(), {old});
    const int before = files.steps();
    {
        const auto store = open(StoreAccess::readOnly);
        ASSERT_TRUE(store->addPage(page("New")));
        store->addNotebook("N");
        EXPECT_TRUE(store->flushAndWait());
        EXPECT_FALSE(store->addMedia(MediaKind::pdf, folders.trash()));
        EXPECT_EQ(store->trash().size(), 1U);
    }
    EXPECT_EQ(files.steps(), before);
}

TEST_F(StoreFiles, TwentyOneLaunchesLeaveTwentyBackups) {
    put(folders.entries(), "[]");
    for (int launch = 0; launch < 21; ++launch) {
        open();
        clock.advance(1);
    }
    const auto backups = names(folders.backups(), "entries-");
    ASSERT_EQ(backups.size(), 20U);
    EXPECT_EQ(backups.front(), "entries-2026-11-21-103001.json");
    EXPECT_EQ(names(folders.dailyBackups(), "entries-"), std::vector<std::string>{"entries-2026-11-21.json"});
}

TEST_F(StoreFiles, LaunchesWithinOneSecondAreNumbered) {
    put(folders.entries(), "[]");
    for (int launch = 0; launch < 23; ++launch) open();
    EXPECT_EQ(names(folders.backups(), "entries-").size(), 20U);
    EXPECT_EQ(content(folders.backups() / "entries-2026-11-21-103000-3.json"), "(none)");
    EXPECT_EQ(content(folders.backups() / "entries-2026-11-21-103000-23.json"), "[]");
}

TEST_F(StoreFiles, DailyBackupsStayFourteenDays) {
    put(folders.entries(), "[]");
    for (int day = 0; day < 20; ++day) {
        open();
        clock.advance(kSecondsPerDay);
    }
    const auto daily = names(folders.dailyBackups(), "entries-");
    ASSERT_EQ(daily.size(), 14U);
    EXPECT_EQ(daily.front(), "entries-2026-11-27.json");
    EXPECT_EQ(daily.back(), "entries-2026-12-10.json");
}

TEST_F(StoreFiles, TenEditsAreOneWrite) {
    const auto store = open();
    const PageId id = *store->addPage(page("0"));
    ASSERT_TRUE(store->flushAndWait());
    const int before = files.steps();
    for (int edit = 1; edit <= 10; ++edit) {
        JournalEntry changed = *store->entries().find(id);
        changed.title = std::to_string(edit);
        ASSERT_TRUE(store->updatePage(changed));
        loop.advance(0.04);
    }
    loop.advance(0.45);
    EXPECT_EQ(files.steps(), before);
    loop.advance(0.1);
    const int oneWrite = files.steps() - before;
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).at(0).title, "10");
    ASSERT_TRUE(store->updatePage(*store->entries().find(id)));
    notifications.post(kNtoFlushStore);
    EXPECT_EQ(files.steps() - before, 2 * oneWrite);
}

TEST_F(StoreFiles, AFailedSaveIsWrittenAgain) {
    const auto store = open();
    store->addNotebook("  ");
    files.failAfter(1, FileError::Kind::noSpace);
    store->addNotebook("Second");
    EXPECT_FALSE(store->flushAndWait());
    EXPECT_TRUE(console.lines().back().starts_with("Notara: notebooks save failed — "));
    files.stopFailing();
    EXPECT_TRUE(store->flushAndWait());
    const auto saved = recordsIn<Notebook>(folders.notebooks());
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved[0].name, kUntitledNotebook);
}

}  // namespace
}  // namespace tessary
