#include "platform/atomic_write.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "support/memory_file_system.h"

namespace tessary {
namespace {

using Names = MemoryFileSystem::UnsyncedNames;

const std::filesystem::path kFolder = "/library";
const std::filesystem::path kFile = kFolder / "pages.json";
const std::string kOld = "the old content";
const std::string kNew = "the new content, which is longer";

void prepare(MemoryFileSystem& files) {
    ASSERT_TRUE(files.createFolders(kFolder));
    ASSERT_TRUE(writeAtomically(files, kFile, kOld));
}

std::string contentOf(const MemoryFileSystem& files) { return files.read(kFile).value_or("(nothing)"); }

std::size_t entryCount(const MemoryFileSystem& files) {
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(kFolder);
    return entries ? entries->size() : 0;
}

int stepsOfOneWrite() {
    MemoryFileSystem files;
    prepare(files);
    const int before = files.steps();
    EXPECT_TRUE(writeAtomically(files, kFile, kNew));
    return files.steps() - before;
}

class FailingStep : public ::testing::TestWithParam<FileError::Kind> {};

TEST_P(FailingStep, LeavesTheOldOrTheNewContentAfterACrash) {
    const int steps = stepsOfOneWrite();
    ASSERT_GE(steps, 5);
    for (int step = 1; step <= steps; ++step) {
        for (const Names names : {Names::lost, Names::kept}) {
            SCOPED_TRACE(step);
            MemoryFileSystem files;
            prepare(files);
            files.failAfter(step, GetParam());
            const FileResult<void> written = writeAtomically(files, kFile, kNew);
            ASSERT_FALSE(written);
            EXPECT_EQ(written.error().kind, GetParam());
            files.crash(names);
            const std::string content = contentOf(files);
            EXPECT_TRUE(content == kOld || content == kNew) << content;
            EXPECT_TRUE(writeAtomically(files, kFile, kNew));
            EXPECT_EQ(contentOf(files), kNew);
            EXPECT_EQ(entryCount(files), 1U);
        }
    }
}

TEST_P(FailingStep, LeavesTheOldContentUntilTheNewIsInPlace) {
    const int lastStep = stepsOfOneWrite();  // the folder is synced when the new content is in place already
    for (int step = 1; step <= lastStep; ++step) {
        SCOPED_TRACE(step);
        MemoryFileSystem files;
        prepare(files);
        files.failAfter(step, GetParam());
        ASSERT_FALSE(writeAtomically(files, kFile, kNew));
        EXPECT_EQ(contentOf(files), step < lastStep ? kOld : kNew);
        files.stopFailing();
        removeStaleTemporaries(files, kFolder);
        EXPECT_EQ(entryCount(files), 1U);
    }
}

INSTANTIATE_TEST_SUITE_P(AtomicWrite, FailingStep,
                         ::testing::Values(FileError::Kind::noSpace, FileError::Kind::denied, FileError::Kind::other));

TEST(AtomicWriteTest, LeavesNoTemporaryFileWhenTheDiskIsFull) {
    for (int step = 1; step <= stepsOfOneWrite(); ++step) {
        SCOPED_TRACE(step);
        MemoryFileSystem files;
        prepare(files);
        files.failAfter(step, FileError::Kind::noSpace);
        ASSERT_FALSE(writeAtomically(files, kFile, kNew));
        EXPECT_EQ(entryCount(files), 1U);
    }
}

TEST(AtomicWriteTest, LastsOnceItHasSucceeded) {
    for (const Names names : {Names::lost, Names::kept}) {
        MemoryFileSystem files;
        prepare(files);
        ASSERT_TRUE(writeAtomically(files, kFile, kNew));
        files.crash(names);
        EXPECT_EQ(contentOf(files), kNew);
        EXPECT_EQ(entryCount(files), 1U);
    }
}

TEST(AtomicWriteTest, MakesAFileThatWasMissing) {
    MemoryFileSystem files;
    ASSERT_TRUE(files.createFolders(kFolder));
    ASSERT_TRUE(writeAtomically(files, kFile, kNew));
    files.crash();
    EXPECT_EQ(contentOf(files), kNew);
}

TEST(AtomicWriteTest, FailsWhereTheFolderIsMissing) {
    MemoryFileSystem files;
    const FileResult<void> written = writeAtomically(files, kFile, kNew);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, FileError::Kind::notFound);
}

TEST(AtomicWriteTest, CopiesOnlyToAFreePlace) {
    MemoryFileSystem files;
    prepare(files);
    ASSERT_TRUE(copyFile(files, kFile, kFolder / "copy.json"));
    EXPECT_EQ(files.read(kFolder / "copy.json").value_or(""), kOld);
    const FileResult<void> again = copyFile(files, kFile, kFolder / "copy.json");
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().kind, FileError::Kind::alreadyExists);
    const FileResult<void> without = copyFile(files, kFolder / "none.json", kFolder / "other.json");
    ASSERT_FALSE(without);
    EXPECT_EQ(without.error().kind, FileError::Kind::notFound);
}

TEST(AtomicWriteTest, ClearsWhatACrashHasLeft) {
    MemoryFileSystem files;
    prepare(files);
    const int steps = stepsOfOneWrite();
    files.failAfter(steps - 1, FileError::Kind::other);
    ASSERT_FALSE(writeAtomically(files, kFile, kNew));
    files.crash(Names::kept);
    ASSERT_EQ(entryCount(files), 2U);
    ASSERT_TRUE(files.create(kFolder / "mine.tmp"));
    ASSERT_TRUE(files.create(kFolder / ".tessary-notes"));
    removeStaleTemporaries(files, kFolder);
    EXPECT_EQ(entryCount(files), 3U);
    EXPECT_EQ(contentOf(files), kOld);
    removeStaleTemporaries(files, "/missing");
}

TEST(AtomicWriteTest, TellsWhatExists) {
    MemoryFileSystem files;
    prepare(files);
    EXPECT_TRUE(exists(files, kFile));
    EXPECT_TRUE(exists(files, kFolder));
    EXPECT_FALSE(exists(files, kFolder / "none.json"));
}

TEST(PlainFileNameTest, RefusesEverythingThatIsMoreThanAName) {
    struct Case {
        std::string name;
        bool isPlain;
    };
    const Case cases[] = {
        {"photo.png", true},  {"a", true},   {"..png", true}, {".hidden", true}, {"...", true},
        {"ü mit Leer", true}, {"", false},   {".", false},    {"..", false},     {"a/b", false},
        {"/a", false},        {"a/", false}, {"../a", false}, {"a\\b", false},   {std::string("a\0b", 3), false},
    };
    for (const Case& example : cases) EXPECT_EQ(isPlainFileName(example.name), example.isPlain) << example.name;
}

}  // namespace
}  // namespace tessary
