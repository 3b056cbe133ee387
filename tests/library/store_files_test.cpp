#include "library/library_exchange.h"
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

TEST_F(StoreFiles, BadContentIsPreservedAndNeverCostsTheMedia) {
    const std::string page = R"({"id":"00000000-0000-4000-8000-0000000000AA","title":"T","body":"B","date":)";
    const std::vector<std::pair<std::string, std::string>> contents = {
        {"empty", ""},
        {"blank", " \n"},
        {"truncated", "[" + page + "1},"},
        {"garbage", std::string("\x7f"
                                "ELF\0\1\2",
                                7)},
        {"an object", "{}"},
        {"null", "null"},
        {"a text", "\"[]\""},
        {"deep lists", std::string(100000, '[')},
        {"deep lists, closed", std::string(100000, '[') + std::string(100000, ']')},
        {"deep unknown key", "[" + page + "1,\"x\":" + std::string(100000, '[') + std::string(100000, ']') + "}]"},
        {"not UTF-8", "[" + page + "1,\"mood\":\"\xc3\x28\"}]"},
        {"UTF-16", std::string("\xff\xfe[\0]\0", 6)},
        {"too large a number", "[" + page + "1e999}]"},
        {"no number", "[" + page + "NaN}]"},
        {"infinite", "[" + page + "-Infinity}]"},
        {"a key twice", "[" + page + "1,\"date\":2}]"},
        {"a list of nulls", "[null]"},
        {"two documents", "[][]"},
    };
    TrashedEntry over;
    over.entry.id = PageId{ids.next()};
    over.entry.audioClips.push_back({.id = ids.next(), .filename = "lone.m4a", .transcript = {}});
    put(folders.audio() / "lone.m4a", "a");
    for (const auto& [name, bad] : contents) {
        for (const auto& path : {folders.entries(), folders.notebooks(), folders.trash(), folders.exams()}) {
            SCOPED_TRACE(name + " " + path.filename().string());
            putRecords<TrashedEntry>(folders.trash(), {over});
            put(path, bad);
            {
                const auto store = open();
                EXPECT_EQ(store->loadProblems().size(), 1U);
                ASSERT_TRUE(store->addPage(StoreTest::page("New")));
                store->addNotebook("N");
                EXPECT_EQ(store->emptyTrash(), 0U);
                EXPECT_TRUE(store->flushAndWait());
            }
            EXPECT_TRUE(exists(files, folders.audio() / "lone.m4a"));
            bool preserved = false;
            for (const std::string& copy : names(folders.base, path.stem().string() + "-corrupt-")) {
                preserved = preserved || content(folders.base / copy) == bad;
            }
            EXPECT_TRUE(preserved);
            for (const auto& each : {folders.entries(), folders.notebooks(), folders.trash(), folders.exams()}) {
                static_cast<void>(files.remove(each));  // not all were written
            }
        }
    }
}

TEST_F(StoreFiles, OddButReadableContentIsRead) {
    const std::string page = R"({"id":"00000000-0000-4000-8000-0000000000AA","title":"T","body":"B","date":1)";
    for (const std::string& content : {
             "\xef\xbb\xbf[" + page + "}]",
             "\r\n[ " + page + " } ]\n\n",
             "[" + page + ",\"x\":" + std::string(500, '[') + std::string(500, ']') + "}]",
             "[" + page + ",\"x\":[1e300,-0.0,18446744073709551615]}]",
             "[" + page + ",\"mood\":null,\"tags\":null,\"type\":7}]",
         }) {
        put(folders.entries(), content);
        const auto store = open();
        EXPECT_TRUE(store->loadProblems().empty()) << content.substr(0, 100);
        EXPECT_EQ(store->entries().size(), 1U) << content.substr(0, 100);
    }
}

TEST_F(StoreFiles, DatesFarAwayAreKept) {
    constexpr double kFar = 1e15;  // seconds
    std::vector<JournalEntry> pages;
    std::vector<TrashedEntry> trash;
    for (const double seconds : {-1e300, -kFar, -0.5, kFar, 1e300}) {
        JournalEntry each = page("At");
        each.id = PageId{ids.next()};
        each.date = Date{seconds};
        each.updatedAt = Date{seconds};
        each.expirationDate = Date{seconds};
        pages.push_back(each);
        each.id = PageId{ids.next()};
        trash.push_back({.entry = each, .deletedAt = Date{seconds}});
    }
    putRecords(folders.entries(), pages);
    putRecords(folders.trash(), trash);
    const auto store = open();
    EXPECT_TRUE(store->loadProblems().empty());
    ASSERT_EQ(store->trash().size(), 2U);  // the others were deleted long ago
    for (const TrashedEntry& trashed : store->trash()) EXPECT_EQ(store->daysLeft(trashed), JournalStore::kTrashDays);
    std::vector<const JournalEntry*> listed;
    for (const JournalEntry& each : store->entries()) listed.push_back(&each);
    store->sortForListing(listed, [](std::string_view title) { return std::string(title); });
    EXPECT_EQ(listed.front()->id, pages.back().id);
    EXPECT_TRUE(exportedMarkdown(*store));
    const auto exported = exportedJson(*store);
    ASSERT_TRUE(exported);
    const auto readBack =
        decodeJson<std::vector<JournalEntry>>(*exported, {.now = {}, .freshId = {}, .dates = JsonDates::iso8601});
    ASSERT_TRUE(readBack);
    EXPECT_EQ(readBack->back(), pages.back()) << "ISO 8601 has no room for its dates";
    ASSERT_TRUE(store->restore(trash.back().entry.id));
    ASSERT_TRUE(store->deletePage(pages.front().id));
    ASSERT_TRUE(store->flushAndWait());
    const auto saved = recordsIn<JournalEntry>(folders.entries());
    ASSERT_EQ(saved.size(), 5U);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(saved[i], pages[i + 1]);
    EXPECT_EQ(saved[4], trash.back().entry);
}

TEST_F(StoreFiles, ALibraryThatCannotBeWrittenIsShownAndTold) {
    JournalEntry kept = page("Kept");
    kept.id = PageId{ids.next()};
    putRecords<JournalEntry>(folders.entries(), {kept});
    putRecords<TrashedEntry>(folders.trash(), {{.entry = page("Old"), .deletedAt = Date{}}});
    const std::string before = content(folders.entries());
    files.failAfter(1, FileError::Kind::denied);
    const auto store = open();
    EXPECT_TRUE(store->entries().contains(kept.id));
    ASSERT_TRUE(store->addPage(page("New")));
    const auto saved = store->flushAndWait();
    ASSERT_FALSE(saved);
    for (const char* name : {"entries.json", "trash.json"}) EXPECT_NE(saved.error().find(name), std::string::npos);
    EXPECT_EQ(content(folders.entries()), before);
    files.stopFailing();
    EXPECT_TRUE(store->flushAndWait());
    EXPECT_EQ(recordsIn<JournalEntry>(folders.entries()).size(), 2U);
}

TEST_F(StoreFiles, AHomeThatDoesNotExistIsMade) {
    folders = {"/nowhere/at/all/Notara"};
    EXPECT_TRUE(open(StoreAccess::readOnly)->loadProblems().empty());
    EXPECT_FALSE(exists(files, "/nowhere"));
    const auto store = open();
    EXPECT_TRUE(store->loadProblems().empty());
    ASSERT_TRUE(store->addPage(page("First")));
    ASSERT_TRUE(store->flushAndWait());
    EXPECT_EQ(open()->entries().size(), 1U);
    EXPECT_TRUE(console.lines().empty());
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

TEST_F(StoreFiles, LaunchesWithAnUndecodableFileLeaveTheGoodBackups) {
    put(folders.entries(), "[]");
    open();
    put(folders.entries(), "broken");
    for (int launch = 0; launch < 25; ++launch) {
        clock.advance(kSecondsPerDay / 10);
        open();
    }
    EXPECT_EQ(content(folders.backups() / "entries-2026-11-21-103000.json"), "[]");
    EXPECT_EQ(content(folders.dailyBackups() / "entries-2026-11-21.json"), "[]");
    EXPECT_EQ(names(folders.backups(), "entries-").size(), 1U);
    EXPECT_EQ(names(folders.base, "entries-corrupt-").size(), 1U);
}

TEST_F(StoreFiles, AClockSetBackDoesNotCostTheNewestBackups) {
    // Made by a right clock, then by one that was ahead; the last by one that is right again.
    for (const double aheadDays : {0.0, 0.5, 400.0}) {
        SCOPED_TRACE(aheadDays);
        for (const std::string& name : names(folders.backups(), "entries-")) {
            ASSERT_TRUE(files.remove(folders.backups() / name));
        }
        const Date start = *parseIso8601("2026-11-21T09:30:00Z");
        const auto launch = [&](Date moment, int number) {
            clock.set(moment);
            put(folders.entries(), "[]" + std::string(static_cast<std::size_t>(number), ' '));
            open();
        };
        int number = 0;
        for (int each = 0; each < 5; ++each) launch(start + each, ++number);
        for (int each = 0; each < 18; ++each) launch(start + aheadDays * kSecondsPerDay + 100 + each, ++number);
        for (int each = 0; each < 10; ++each) launch(start + 200 + each, ++number);
        std::vector<std::size_t> kept;
        for (const std::string& name : names(folders.backups(), "entries-")) {
            kept.push_back(content(folders.backups() / name).size() - 2);
        }
        ASSERT_EQ(kept.size(), 20U);
        for (std::size_t newest = 24; newest <= 33; ++newest) {
            EXPECT_NE(std::ranges::find(kept, newest), kept.end()) << newest;
        }
    }
}

TEST_F(StoreFiles, TheHourThatComesTwiceKeepsTheNewestBackups) {
    clock.set(*parseIso8601("2026-10-25T00:50:00Z"));  // 02:50 in Berlin, ten minutes before summer time ends
    put(folders.entries(), "[]");
    for (int launch = 0; launch < 15; ++launch) open();
    clock.set(*parseIso8601("2026-10-25T01:10:00Z"));  // 02:10 again
    put(folders.entries(), "[ ]");
    for (int launch = 0; launch < 10; ++launch) open();
    int newest = 0;
    for (const std::string& name : names(folders.backups(), "entries-")) {
        if (content(folders.backups() / name) == "[ ]") ++newest;
    }
    EXPECT_EQ(names(folders.backups(), "entries-").size(), 20U);
    EXPECT_EQ(newest, 10);
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
    clock.advance(3650 * kSecondsPerDay);
    open();
    EXPECT_EQ(names(folders.dailyBackups(), "entries-").size(), 14U) << "a clock set forward takes only the oldest";
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
