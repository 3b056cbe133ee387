#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "platform/adapters/posix/posix_file_system.h"
#include "platform/atomic_write.h"
#include "platform/file_system.h"
#include "support/memory_file_system.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr double kReferenceInUnixSeconds = 978307200;

enum class Kind { posix, memory };

fs::path freshFolder() {
    static std::atomic<int> count = 0;
    return fs::path(::testing::TempDir()) /
           ("tessary-files-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
}

std::unique_ptr<FileSystem> makeFiles(Kind kind) {
    if (kind == Kind::posix) return std::make_unique<PosixFileSystem>();
    return std::make_unique<MemoryFileSystem>();
}

template <class T>
FileError::Kind errorOf(const FileResult<T>& result) {
    EXPECT_FALSE(result.has_value());
    if (result) return FileError::Kind::other;
    EXPECT_FALSE(result.error().message.empty());
    return result.error().kind;
}

class FolderFixture {
protected:
    explicit FolderFixture(Kind kind) : files_(makeFiles(kind)) { EXPECT_TRUE(files_->createFolders(folder_)); }
    ~FolderFixture() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    void put(const fs::path& path, std::string_view content) const {
        FileResult<std::unique_ptr<WritableFile>> file = files_->create(path);
        ASSERT_TRUE(file) << file.error().message;
        ASSERT_TRUE((*file)->write(content));
        ASSERT_TRUE((*file)->sync());
    }
    [[nodiscard]] std::string get(const fs::path& path) const { return files_->read(path).value_or("(nothing)"); }

    fs::path folder_ = freshFolder();
    std::unique_ptr<FileSystem> files_;
};

class FileSystemContract : public FolderFixture, public ::testing::TestWithParam<Kind> {
protected:
    FileSystemContract() : FolderFixture(GetParam()) {}
};

TEST_P(FileSystemContract, ReadsWhatWasWritten) {
    const std::string binary("a\0b\n\xff", 5);
    const std::string large(300000, 'x');
    put(folder_ / "binary", binary);
    put(folder_ / "large", large);
    put(folder_ / "empty", "");
    EXPECT_EQ(get(folder_ / "binary"), binary);
    EXPECT_EQ(get(folder_ / "large"), large);
    EXPECT_EQ(get(folder_ / "empty"), "");
}

TEST_P(FileSystemContract, ReadsWithSpareCapacity) {
    for (const std::size_t size : {0U, 1U, 4096U, 70000U}) {
        const fs::path path = folder_ / std::to_string(size);
        put(path, std::string(size, 'x'));
        const FileResult<std::string> content = files_->read(path);
        ASSERT_TRUE(content);
        EXPECT_EQ(content->size(), size);
        EXPECT_GE(content->capacity(), size + 64);
    }
}

TEST_P(FileSystemContract, WritesInPieces) {
    FileResult<std::unique_ptr<WritableFile>> file = files_->create(folder_ / "a");
    ASSERT_TRUE(file);
    ASSERT_TRUE((*file)->write("one "));
    ASSERT_TRUE((*file)->write("two"));
    ASSERT_TRUE((*file)->sync());
    EXPECT_EQ(get(folder_ / "a"), "one two");
}

TEST_P(FileSystemContract, RefusesToReadWhatIsNoFile) {
    EXPECT_EQ(errorOf(files_->read(folder_ / "none")), FileError::Kind::notFound);
    EXPECT_EQ(errorOf(files_->read(folder_)), FileError::Kind::other);
    put(folder_ / "file", "");
    EXPECT_EQ(errorOf(files_->read(folder_ / "file" / "inside")), FileError::Kind::notFound);
}

TEST_P(FileSystemContract, ErrorsNameThePath) {
    const FileResult<std::string> content = files_->read(folder_ / "none");
    ASSERT_FALSE(content);
    EXPECT_TRUE(content.error().message.starts_with((folder_ / "none").string() + ": ")) << content.error().message;
}

TEST_P(FileSystemContract, CreatesOnlyWhereNothingLies) {
    put(folder_ / "a", "kept");
    EXPECT_EQ(errorOf(files_->create(folder_ / "a")), FileError::Kind::alreadyExists);
    EXPECT_EQ(errorOf(files_->create(folder_ / "none" / "a")), FileError::Kind::notFound);
    EXPECT_EQ(get(folder_ / "a"), "kept");
}

TEST_P(FileSystemContract, RenamesOverWhatLiesThere) {
    put(folder_ / "a", "new");
    put(folder_ / "b", "old");
    ASSERT_TRUE(files_->rename(folder_ / "a", folder_ / "b"));
    EXPECT_EQ(get(folder_ / "b"), "new");
    EXPECT_FALSE(exists(*files_, folder_ / "a"));
    EXPECT_TRUE(files_->syncFolder(folder_));
}

TEST_P(FileSystemContract, RenamesFoldersWithTheirContent) {
    ASSERT_TRUE(files_->createFolders(folder_ / "one"));
    put(folder_ / "one" / "a", "content");
    ASSERT_TRUE(files_->rename(folder_ / "one", folder_ / "two"));
    EXPECT_EQ(get(folder_ / "two" / "a"), "content");
}

TEST_P(FileSystemContract, RefusesToRenameWhatIsMissingOrOntoAFolder) {
    put(folder_ / "a", "kept");
    ASSERT_TRUE(files_->createFolders(folder_ / "sub"));
    EXPECT_EQ(errorOf(files_->rename(folder_ / "none", folder_ / "b")), FileError::Kind::notFound);
    EXPECT_EQ(errorOf(files_->rename(folder_ / "a", folder_ / "none" / "a")), FileError::Kind::notFound);
    EXPECT_EQ(errorOf(files_->rename(folder_ / "a", folder_ / "sub")), FileError::Kind::other);
    EXPECT_EQ(get(folder_ / "a"), "kept");
}

TEST_P(FileSystemContract, RemovesFilesAndEmptyFolders) {
    ASSERT_TRUE(files_->createFolders(folder_ / "sub"));
    put(folder_ / "sub" / "a", "");
    EXPECT_EQ(errorOf(files_->remove(folder_ / "sub")), FileError::Kind::other);
    EXPECT_TRUE(files_->remove(folder_ / "sub" / "a"));
    EXPECT_TRUE(files_->remove(folder_ / "sub"));
    EXPECT_EQ(errorOf(files_->remove(folder_ / "sub")), FileError::Kind::notFound);
}

TEST_P(FileSystemContract, CreatesFoldersWithTheirParents) {
    const fs::path deep = folder_ / "a" / "b" / "c";
    ASSERT_TRUE(files_->createFolders(deep));
    ASSERT_TRUE(files_->createFolders(deep));
    put(deep / "file", "");
    EXPECT_EQ(errorOf(files_->createFolders(deep / "file")), FileError::Kind::alreadyExists);
    EXPECT_EQ(errorOf(files_->createFolders(deep / "file" / "d")), FileError::Kind::alreadyExists);
}

TEST_P(FileSystemContract, ListsByName) {
    put(folder_ / "b", "");
    put(folder_ / "a", "");
    put(folder_ / "B", "");
    ASSERT_TRUE(files_->createFolders(folder_ / "sub"));
    const FileResult<std::vector<DirectoryEntry>> entries = files_->list(folder_);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 4U);
    const char* const names[] = {"B", "a", "b", "sub"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ((*entries)[i].name, names[i]);
        EXPECT_EQ((*entries)[i].kind, i == 3 ? FileKind::directory : FileKind::file);
        EXPECT_FALSE((*entries)[i].isSymbolicLink);
    }
    EXPECT_EQ(errorOf(files_->list(folder_ / "none")), FileError::Kind::notFound);
    EXPECT_FALSE(files_->list(folder_ / "a"));
}

TEST_P(FileSystemContract, TellsKindAndSize) {
    put(folder_ / "a", "12345");
    const FileResult<FileInfo> file = files_->info(folder_ / "a");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->kind, FileKind::file);
    EXPECT_EQ(file->size, 5U);
    const FileResult<FileInfo> folder = files_->info(folder_);
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->kind, FileKind::directory);
    EXPECT_EQ(errorOf(files_->info(folder_ / "none")), FileError::Kind::notFound);
}

TEST_P(FileSystemContract, AppendsLines) {
    const fs::path path = folder_ / "journal";
    ASSERT_TRUE(files_->appendLine(path, "one"));
    ASSERT_TRUE(files_->appendLine(path, "two"));
    EXPECT_EQ(get(path), "one\ntwo\n");
    EXPECT_EQ(errorOf(files_->appendLine(folder_ / "none" / "journal", "x")), FileError::Kind::notFound);
    EXPECT_FALSE(files_->appendLine(folder_, "x"));
}

TEST_P(FileSystemContract, EndsATornLineBeforeAppending) {
    put(folder_ / "journal", "one\ntw");
    ASSERT_TRUE(files_->appendLine(folder_ / "journal", "three"));
    EXPECT_EQ(get(folder_ / "journal"), "one\ntw\nthree\n");
}

TEST_P(FileSystemContract, LocksAFolderOnce) {
    {
        const auto lock = files_->lock(folder_);
        ASSERT_TRUE(lock) << lock.error().message;
        const auto second = files_->lock(folder_);
        ASSERT_FALSE(second);
        EXPECT_TRUE(second.error().heldByOther);
        EXPECT_GT(second.error().holder, 0);
        EXPECT_FALSE(second.error().message.empty());
    }
    EXPECT_TRUE(exists(*files_, folder_ / kLockFileName));
    EXPECT_TRUE(files_->lock(folder_));
}

TEST_P(FileSystemContract, CannotLockAFolderThatIsMissing) {
    const auto lock = files_->lock(folder_ / "none");
    ASSERT_FALSE(lock);
    EXPECT_FALSE(lock.error().heldByOther);
    EXPECT_EQ(lock.error().holder, 0);
    EXPECT_FALSE(lock.error().message.empty());
}

TEST_P(FileSystemContract, ReplacesAFileWhole) {
    ASSERT_TRUE(writeAtomically(*files_, folder_ / "a", "old"));
    ASSERT_TRUE(writeAtomically(*files_, folder_ / "a", "new"));
    EXPECT_EQ(get(folder_ / "a"), "new");
    EXPECT_EQ(files_->list(folder_)->size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Files, FileSystemContract, ::testing::Values(Kind::posix, Kind::memory),
                         [](const auto& test) { return test.param == Kind::posix ? "Posix" : "Memory"; });

class PosixFileSystemTest : public FolderFixture, public ::testing::Test {
protected:
    PosixFileSystemTest() : FolderFixture(Kind::posix) {}

    static int modeOf(const fs::path& path) {
        return static_cast<int>(fs::status(path).permissions() & fs::perms::mask);
    }
};

TEST_F(PosixFileSystemTest, NewFilesAndFoldersAreForTheUserAlone) {
    put(folder_ / "a", "");
    ASSERT_TRUE(files_->appendLine(folder_ / "journal", "x"));
    ASSERT_TRUE(files_->createFolders(folder_ / "b" / "c"));
    EXPECT_EQ(modeOf(folder_ / "a"), 0600);
    EXPECT_EQ(modeOf(folder_ / "journal"), 0600);
    EXPECT_EQ(modeOf(folder_ / "b"), 0700);
    EXPECT_EQ(modeOf(folder_ / "b" / "c"), 0700);
}

TEST_F(PosixFileSystemTest, ReplacingKeepsPermissions) {
    for (const int mode : {0644, 0666, 0600}) {
        ASSERT_TRUE(writeAtomically(*files_, folder_ / "a", "old"));
        fs::permissions(folder_ / "a", static_cast<fs::perms>(mode));
        ASSERT_TRUE(writeAtomically(*files_, folder_ / "a", "new"));
        EXPECT_EQ(modeOf(folder_ / "a"), mode);
    }
}

TEST_F(PosixFileSystemTest, ReplacingFollowsSymbolicLinks) {
    ASSERT_TRUE(files_->createFolders(folder_ / "real"));
    put(folder_ / "real" / "a", "old");
    fs::create_symlink("real/a", folder_ / "link");
    fs::create_symlink("link", folder_ / "chain");
    ASSERT_TRUE(writeAtomically(*files_, folder_ / "chain", "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "chain"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(get(folder_ / "real" / "a"), "new");
}

TEST_F(PosixFileSystemTest, WritesThroughALinkThatLeadsNowhereYet) {
    fs::create_symlink("target", folder_ / "link");
    ASSERT_TRUE(writeAtomically(*files_, folder_ / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(get(folder_ / "target"), "new");
}

TEST_F(PosixFileSystemTest, ALoopOfLinksIsAnError) {
    fs::create_symlink("b", folder_ / "a");
    fs::create_symlink("a", folder_ / "b");
    EXPECT_EQ(errorOf(files_->read(folder_ / "a")), FileError::Kind::other);
    EXPECT_EQ(files_->resolved(folder_ / "a").parent_path(), files_->resolved(folder_));
}

TEST_F(PosixFileSystemTest, ListsWhatLinksLeadTo) {
    put(folder_ / "file", "");
    fs::create_symlink("file", folder_ / "link1");
    fs::create_symlink(".", folder_ / "link2");
    fs::create_symlink("none", folder_ / "link3");
    const FileResult<std::vector<DirectoryEntry>> entries = files_->list(folder_);
    ASSERT_TRUE(entries);
    ASSERT_EQ(entries->size(), 4U);
    const FileKind kinds[] = {FileKind::file, FileKind::file, FileKind::directory, FileKind::other};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ((*entries)[i].kind, kinds[i]) << i;
        EXPECT_EQ((*entries)[i].isSymbolicLink, i > 0) << i;
    }
}

TEST_F(PosixFileSystemTest, APipeIsNoFileToRead) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(errorOf(files_->read(folder_ / "pipe")), FileError::Kind::other);
}

TEST_F(PosixFileSystemTest, DeniesWhatPermissionsForbid) {
    if (::geteuid() == 0) GTEST_SKIP() << "nothing is forbidden to this user";
    put(folder_ / "a", "");
    fs::permissions(folder_ / "a", fs::perms::none);
    EXPECT_EQ(errorOf(files_->read(folder_ / "a")), FileError::Kind::denied);
    EXPECT_EQ(errorOf(files_->appendLine(folder_ / "a", "x")), FileError::Kind::denied);
}

TEST_F(PosixFileSystemTest, TellsAFullDisk) {
    if (!fs::exists("/dev/full")) GTEST_SKIP();
    EXPECT_EQ(errorOf(files_->appendLine("/dev/full", "x")), FileError::Kind::noSpace);
}

TEST_F(PosixFileSystemTest, TellsWhenAFileWasModified) {
    put(folder_ / "a", "x");
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const double seconds = std::chrono::duration<double>(now).count() - kReferenceInUnixSeconds;
    EXPECT_NEAR(files_->info(folder_ / "a")->modified.seconds, seconds, 60);
}

TEST_F(PosixFileSystemTest, TheLockFileTellsTheHolder) {
    std::ofstream(folder_ / kLockFileName) << "12345678901 left by a crash";
    const auto lock = files_->lock(folder_);
    ASSERT_TRUE(lock);
    EXPECT_EQ(get(folder_ / kLockFileName), std::to_string(::getpid()) + "\n");
    const auto second = PosixFileSystem().lock(folder_);
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().holder, ::getpid());
}

}  // namespace
}  // namespace tessary
