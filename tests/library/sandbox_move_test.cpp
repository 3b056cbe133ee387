#include "library/sandbox_move.h"

#include <gtest/gtest.h>

#include "library/library_json.h"
#include "platform/adapters/icu/icu_calendar.h"
#include "platform/adapters/ini/ini_settings.h"
#include "platform/atomic_write.h"
#include "support/fakes.h"
#include "support/memory_file_system.h"
#include "support/virtual_loop.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

struct Computer {
    Computer() { put(kNew / kLockFileName, "1"); }

    void put(const fs::path& path, std::string_view content) {
        ASSERT_TRUE(files.createFolders(path.parent_path()));
        ASSERT_TRUE(writeAtomically(files, path, content));
    }

    std::string pages(std::size_t count, double latestEdit) {
        std::vector<JournalEntry> entries(count);
        for (JournalEntry& entry : entries) entry.id = PageId{ids.next()};
        if (count > 0) entries.back().updatedAt = Date{latestEdit};
        return encodeJson(entries).value();
    }

    void putOld(std::string_view content) { put(kOld / "entries.json", content); }
    void putNew(std::string_view content) { put(kNew / "entries.json", content); }
    [[nodiscard]] std::string present() const { return files.read(kNew / "entries.json").value_or("none"); }
    [[nodiscard]] bool flagged() const { return settings.boolean(kLeftSandboxKey).value_or(false); }
    [[nodiscard]] fs::path aside() const {
        return "/somebody/Notara-before-1.3.2-" + timeStamp(calendar.civilTime(clock.now()));
    }
    void leave() { leaveSandbox({.homeFolder = "/somebody", .libraryFolder = kNew}, services); }

    static inline const fs::path kNew = "/somebody/Notara";
    static inline const fs::path kOld =
        "/somebody/Library/Containers/com.vorlek.Notara/Data/Library/Application Support/Notara";

    MemoryFileSystem files;
    VirtualLoop loop;
    ManualClock clock{Date{800'000'000}};
    IcuCalendar calendar{"Europe/Berlin"};
    SequentialIds ids;
    IniSettings settings{files, "/settings.ini"};
    RecordingConsole console;
    NotificationCenter notifications;
    StoreServices services{files, loop, clock, calendar, ids, settings, console, notifications};
};

class SandboxMoveTest : public Computer, public ::testing::Test {};

TEST_F(SandboxMoveTest, TakesTheOldLibraryOverAndKeepsTheNewOne) {
    const std::string old = pages(3, 20);
    const std::string before = pages(2, 20);
    putOld(old);
    put(kOld / "images" / "a.png", "picture");
    put(kOld / kLockFileName, "99");
    putNew(before);
    put(kNew / "audio" / "b.m4a", "sound");
    leave();
    EXPECT_EQ(present(), old);
    EXPECT_EQ(files.read(kNew / "images" / "a.png").value(), "picture");
    EXPECT_EQ(files.read(kNew / kLockFileName).value(), "1");
    EXPECT_FALSE(exists(files, kNew / "audio"));
    EXPECT_EQ(files.read(aside() / "entries.json").value(), before);
    EXPECT_EQ(files.read(aside() / "audio" / "b.m4a").value(), "sound");
    EXPECT_EQ(files.read(kOld / "entries.json").value(), old);
    EXPECT_TRUE(flagged());
    EXPECT_TRUE(console.lines().empty());
}

TEST_F(SandboxMoveTest, AFreshLibraryNeedsNoPlaceAside) {
    putOld(pages(1, 5));
    leave();
    EXPECT_EQ(present(), files.read(kOld / "entries.json").value());
    EXPECT_FALSE(exists(files, aside()));
}

TEST_F(SandboxMoveTest, ComparesPagesAndLatestEdits) {
    struct Case {
        std::size_t oldPages;
        double oldEdit;
        std::size_t newPages;
        double newEdit;
        bool taken;
    };
    for (const Case& c :
         {Case{2, 10, 2, 10, false}, Case{2, 11, 2, 10, true}, Case{3, 10, 2, 10, true}, Case{3, 9, 2, 10, false},
          Case{1, 11, 2, 10, false}, Case{0, 0, 0, 0, false}, Case{1, 1, 0, 0, true}}) {
        const std::string old = pages(c.oldPages, c.oldEdit);
        putOld(old);
        putNew(pages(c.newPages, c.newEdit));
        ASSERT_TRUE(settings.remove(kLeftSandboxKey));
        const bool alike = present() == old;
        leave();
        EXPECT_EQ(present() == old && !alike, c.taken) << c.oldPages << ' ' << c.oldEdit;
        EXPECT_TRUE(flagged());
    }
}

TEST_F(SandboxMoveTest, NeverReplacesWhatCannotBeDecoded) {
    putOld(pages(3, 20));
    putNew("[{");
    leave();
    EXPECT_EQ(present(), "[{");
}

TEST_F(SandboxMoveTest, AnOldLibraryThatCannotBeDecodedStays) {
    putOld("[{");
    leave();
    EXPECT_EQ(present(), "none");
}

TEST_F(SandboxMoveTest, HappensOnceAndOnlyOutsideTheSandbox) {
    putOld(pages(3, 20));
    leaveSandbox({.stillSandboxed = true, .homeFolder = "/somebody", .libraryFolder = kNew}, services);
    EXPECT_EQ(present(), "none");
    EXPECT_FALSE(flagged());
    ASSERT_TRUE(settings.setBoolean(kLeftSandboxKey, true));
    leave();
    EXPECT_EQ(present(), "none");
}

TEST_F(SandboxMoveTest, PagesThatCannotBeCopiedAreTriedAgainAtTheNextStart) {
    const std::string before = pages(2, 20);
    putNew(before);
    put(kNew / "audio" / "b.m4a", "sound");
    ASSERT_TRUE(files.createFolders(kOld / "entries.json"));  // a folder cannot be read as a file
    for (int start = 0; start < 3; ++start) leave();
    EXPECT_EQ(present(), before);
    EXPECT_FALSE(flagged());
    EXPECT_EQ(console.lines().size(), 3U);
    ASSERT_TRUE(files.remove(kOld / "entries.json"));
    const std::string old = pages(3, 20);
    putOld(old);
    files.failAfter(4, FileError::Kind::noSpace);
    leave();
    files.stopFailing();
    EXPECT_EQ(console.lines().size(), 4U);
    EXPECT_EQ(present(), before);
    EXPECT_TRUE(exists(files, kNew / "audio" / "b.m4a"));
    EXPECT_FALSE(exists(files, aside()));
    EXPECT_FALSE(flagged());
    for (const std::string& line : console.lines()) {
        EXPECT_TRUE(line.starts_with("Tessary: couldn't copy the journal out of the sandbox: ")) << line;
        EXPECT_NE(line.find("entries.json"), std::string::npos) << line;
    }
    leave();
    EXPECT_EQ(present(), old);
    EXPECT_EQ(files.read(aside() / "entries.json").value_or(""), before);
    EXPECT_TRUE(flagged());
}

TEST_F(SandboxMoveTest, AMediumThatCannotBeCopiedDoesNotHoldUpThePages) {
    putOld(pages(3, 20));
    put(kOld / "images" / "a.png", "picture");
    put(kOld / "pdfs" / "b.pdf", "paper");
    put("/somebody/Notara-arriving/images", "in the way");
    leave();
    EXPECT_EQ(present(), files.read(kOld / "entries.json").value());
    EXPECT_EQ(files.read(kNew / "pdfs" / "b.pdf").value_or(""), "paper");
    EXPECT_TRUE(flagged());
    ASSERT_EQ(console.lines().size(), 1U);
    EXPECT_TRUE(console.lines()[0].starts_with("Tessary: couldn't copy the journal out of the sandbox: "));
}

/// How many folders beside and at the new place hold this entries.json.
int placesOf(const Computer& computer, const std::string& content) {
    int count = 0;
    const std::vector<DirectoryEntry> folders = computer.files.list("/somebody").value();
    for (const DirectoryEntry& entry : folders) {
        const fs::path file = fs::path("/somebody") / entry.name / "entries.json";
        if (computer.files.read(file).value_or("") == content) ++count;
    }
    return count;
}

/// A takeover that fails from `step` on; false when it came to its end before that.
bool failsAndRecovers(int step, FileError::Kind kind, std::optional<MemoryFileSystem::UnsyncedNames> crash) {
    Computer computer;
    const std::string old = computer.pages(3, 20);
    const std::string before = computer.pages(2, 20);
    computer.putOld(old);
    computer.put(Computer::kOld / "images" / "a.png", "picture");
    computer.putNew(before);
    computer.put(Computer::kNew / "audio" / "b.m4a", "sound");
    computer.files.failAfter(step, kind);
    computer.leave();
    computer.files.stopFailing();
    const bool failed = !computer.console.lines().empty();
    EXPECT_TRUE(computer.present() == old || !computer.flagged());
    if (crash) computer.files.crash(*crash);
    // After a crash a name that has moved may stand in both folders.
    const int mostPlaces = crash == MemoryFileSystem::UnsyncedNames::lost ? 2 : 1;
    for (int start = 0; start < 3; ++start) {
        EXPECT_GE(placesOf(computer, before), 1) << start;
        EXPECT_LE(placesOf(computer, before), mostPlaces) << start;
        computer.leave();
    }
    EXPECT_EQ(computer.present(), old);
    EXPECT_EQ(computer.files.read(Computer::kOld / "entries.json").value_or(""), old);
    EXPECT_TRUE(computer.flagged());
    return failed;
}

TEST(SandboxMoveFailureTest, AtAnyStepNothingIsLostOrDoubledAndTheNextStartSucceeds) {
    using Names = MemoryFileSystem::UnsyncedNames;
    for (const FileError::Kind kind : {FileError::Kind::noSpace, FileError::Kind::other}) {
        for (const std::optional<Names> crash : {std::optional<Names>(), {Names::lost}, {Names::kept}}) {
            int step = 1;
            for (bool failed = true; failed; ++step) {
                SCOPED_TRACE(step);
                failed = failsAndRecovers(step, kind, crash);
            }
            EXPECT_GT(step, 15);
        }
    }
}

}  // namespace
}  // namespace tessary
