#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <string>

#include "contract/folder_fixture.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

constexpr double kReferenceInUnixSeconds = 978307200;

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

/// A child of this process. It ends with `run`, whose result is its exit code.
template <class Run>
pid_t startProcess(Run run) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(run());
    return child;
}

/// The exit code of a child, -1 when a signal ended it.
int exitCodeOf(pid_t child) {
    int status = 0;
    if (child <= 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

/// Nothing is forbidden to the super-user.
bool becomeOrdinaryUser() {
    constexpr uid_t kNobody = 65534;
    if (::geteuid() != 0) return true;
    return ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
}

template <class T>
bool isDenied(const FileResult<T>& result) {
    return !result && result.error().kind == FileError::Kind::denied && !result.error().message.empty();
}

/// The number of the first expectation that failed, 0 when none did.
int firstSurprise(FileSystem& files, const fs::path& folder) {
    if (!becomeOrdinaryUser()) return 1;
    if (files.read(folder / "open") != "content") return 2;
    if (!isDenied(files.read(folder / "closed"))) return 3;
    if (!isDenied(files.appendLine(folder / "closed", "x"))) return 4;
    if (!isDenied(files.create(folder / "new"))) return 5;
    if (!isDenied(files.createFolders(folder / "sub"))) return 6;
    if (!isDenied(files.rename(folder / "open", folder / "other"))) return 7;
    if (!isDenied(files.remove(folder / "open"))) return 8;
    if (!isDenied(writeAtomically(files, folder / "open", "x"))) return 9;
    const auto lock = files.lock(folder);
    if (lock || lock.error().heldByOther || lock.error().message.empty()) return 10;
    return 0;
}

TEST_F(PosixFileSystemTest, DeniesWhatPermissionsForbid) {
    put(folder_ / "open", "content");
    put(folder_ / "closed", "");
    fs::permissions(folder_ / "open", fs::perms(0444));
    fs::permissions(folder_ / "closed", fs::perms::none);
    fs::permissions(folder_, fs::perms(0555));
    EXPECT_EQ(exitCodeOf(startProcess([&] { return firstSurprise(*files_, folder_); })), 0);
    fs::permissions(folder_, fs::perms(0700));
    EXPECT_EQ(get(folder_ / "open"), "content");
}

TEST_F(PosixFileSystemTest, AnotherProgramCannotLockWhatThisOneHolds) {
    const auto tryToLock = [&] {
        const auto lock = PosixFileSystem().lock(folder_);
        if (lock) return 1;
        const bool named = lock.error().message.ends_with("(process " + std::to_string(::getppid()) + ")");
        return lock.error().heldByOther && lock.error().holder == ::getppid() && named ? 2 : 3;
    };
    auto lock = files_->lock(folder_);
    ASSERT_TRUE(lock);
    EXPECT_EQ(exitCodeOf(startProcess(tryToLock)), 2);
    lock->reset();
    EXPECT_EQ(exitCodeOf(startProcess(tryToLock)), 1);
}

TEST_F(PosixFileSystemTest, AKilledProgramLeavesNoLock) {
    int pipe[2] = {};
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t holder = startProcess([&] {
        const auto lock = files_->lock(folder_);
        if (lock && ::write(pipe[1], "1", 1) == 1) ::pause();
        return 1;
    });
    ::close(pipe[1]);
    char locked = 0;
    EXPECT_EQ(::read(pipe[0], &locked, 1), 1);
    ::close(pipe[0]);
    const auto refused = files_->lock(folder_);
    ::kill(holder, SIGKILL);
    EXPECT_EQ(exitCodeOf(holder), -1);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().holder, holder);
    EXPECT_TRUE(refused.error().message.ends_with("(process " + std::to_string(holder) + ")"))
        << refused.error().message;
    EXPECT_TRUE(files_->lock(folder_));
    EXPECT_EQ(get(folder_ / kLockFileName), std::to_string(::getpid()) + "\n");
}

TEST_F(PosixFileSystemTest, ReplacesFilesOfTheLongestNames) {
    for (const std::size_t length : {200U, 201U, 243U, 255U}) {
        const fs::path path = folder_ / std::string(length, 'n');
        for (const char* const text : {"old", "new"}) {
            const FileResult<void> written = writeAtomically(*files_, path, text);
            ASSERT_TRUE(written) << written.error().message;
        }
        EXPECT_EQ(get(path), "new");
    }
    EXPECT_EQ(files_->list(folder_)->size(), 4U);
}

TEST_F(PosixFileSystemTest, TellsAFullDisk) {
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
