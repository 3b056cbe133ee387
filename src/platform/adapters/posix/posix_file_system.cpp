#include "platform/adapters/posix/posix_file_system.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <system_error>
#include <utility>

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSpareCapacity = 64;
constexpr std::size_t kSmallestRead = 4096;
constexpr int kLongestLinkChain = 40;
constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kPrivateFolder = 0700;
constexpr mode_t kPermissionBits = 0777;
constexpr double kReferenceInUnixSeconds = 978307200;  // 2001-01-01 00:00:00 UTC
constexpr double kSecondsPerNanosecond = 1e-9;

FileError::Kind kindOf(int code) {
    switch (code) {
        case ENOENT:
        case ENOTDIR: return FileError::Kind::notFound;
        case EACCES:
        case EPERM:
        case EROFS: return FileError::Kind::denied;
        case ENOSPC:
        case EDQUOT: return FileError::Kind::noSpace;
        case EEXIST: return FileError::Kind::alreadyExists;
        default: return FileError::Kind::other;
    }
}

std::string describe(const fs::path& path, int code) {
    return path.string() + ": " + std::generic_category().message(code);
}

std::unexpected<FileError> failure(const fs::path& path, int code) {
    return std::unexpected(FileError{kindOf(code), describe(path, code)});
}

/// Calls a function that reports through `errno` until no signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }

    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

FileResult<Descriptor> openFile(const fs::path& path, int flags, mode_t mode = 0) {
    const int number = uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); });
    if (number < 0) return failure(path, errno);
    return Descriptor(number);
}

FileResult<struct stat> statusOf(const Descriptor& file, const fs::path& path) {
    struct stat status{};
    if (::fstat(file.number(), &status) != 0) return failure(path, errno);
    return status;
}

FileResult<void> writeAll(const Descriptor& file, const fs::path& path, std::string_view data) {
    while (!data.empty()) {
        const ssize_t count = uninterrupted([&] { return ::write(file.number(), data.data(), data.size()); });
        if (count < 0) return failure(path, errno);
        data.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

FileResult<void> syncAll(const Descriptor& file, const fs::path& path) {
    if (uninterrupted([&] { return ::fsync(file.number()); }) != 0) return failure(path, errno);
    return {};
}

FileResult<std::string> readAll(const Descriptor& file, const fs::path& path, std::size_t expectedSize) {
    std::string content;
    content.reserve(expectedSize + kSpareCapacity);
    content.resize(std::max(expectedSize + 1, kSmallestRead));  // one more byte than expected meets the end at once
    std::size_t filled = 0;
    while (true) {
        if (filled == content.size()) content.resize(content.size() * 2);
        const ssize_t count =
            uninterrupted([&] { return ::read(file.number(), content.data() + filled, content.size() - filled); });
        if (count < 0) return failure(path, errno);
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    content.resize(filled);
    content.reserve(filled + kSpareCapacity);
    return content;
}

FileKind kindOf(const fs::file_status& status) {
    if (fs::is_regular_file(status)) return FileKind::file;
    return fs::is_directory(status) ? FileKind::directory : FileKind::other;
}

FileKind kindOf(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return FileKind::file;
    return S_ISDIR(status.st_mode) ? FileKind::directory : FileKind::other;
}

Date modifiedOf(const struct stat& status) {
    return Date{static_cast<double>(status.st_mtim.tv_sec) - kReferenceInUnixSeconds +
                static_cast<double>(status.st_mtim.tv_nsec) * kSecondsPerNanosecond};
}

DirectoryEntry entryOf(const fs::directory_entry& entry) {
    std::error_code ignored;  // what cannot be looked at is listed as neither file nor folder
    return {.name = entry.path().filename().string(),
            .kind = kindOf(entry.status(ignored)),
            .isSymbolicLink = entry.is_symlink(ignored)};
}

fs::path parentOf(const fs::path& path) {
    const fs::path parent = path.parent_path();
    return parent.empty() ? fs::path(".") : parent;
}

class PosixWritableFile final : public WritableFile {
public:
    PosixWritableFile(Descriptor file, fs::path path) : file_(std::move(file)), path_(std::move(path)) {}

    FileResult<void> write(std::string_view data) override { return writeAll(file_, path_, data); }
    FileResult<void> sync() override { return syncAll(file_, path_); }

private:
    Descriptor file_;
    fs::path path_;
};

FileResult<void> copyPermissions(const Descriptor& file, const fs::path& path, const fs::path& like) {
    struct stat status{};
    if (like.empty() || ::stat(like.c_str(), &status) != 0) return {};
    if (::fchmod(file.number(), status.st_mode & kPermissionBits) != 0) return failure(path, errno);
    return {};
}

FileResult<void> createOneFolder(const fs::path& folder) {
    if (::mkdir(folder.c_str(), kPrivateFolder) == 0) return {};
    const int code = errno;
    struct stat status{};
    const bool isFolder = ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    if (isFolder) return {};
    return failure(folder, code);
}

FileResult<bool> endsInsideLine(const Descriptor& file, const fs::path& path) {
    const FileResult<struct stat> status = statusOf(file, path);
    if (!status) return std::unexpected(status.error());
    if (status->st_size == 0) return false;
    char last = 0;
    const ssize_t count = uninterrupted([&] { return ::pread(file.number(), &last, 1, status->st_size - 1); });
    if (count < 0) return failure(path, errno);
    return count == 1 && last != '\n';
}

FileResult<void> appendTo(const Descriptor& file, const fs::path& path, std::string_view line) {
    const FileResult<bool> torn = endsInsideLine(file, path);
    if (!torn) return std::unexpected(torn.error());
    std::string data = *torn ? "\n" : "";
    data.append(line).push_back('\n');
    if (FileResult<void> written = writeAll(file, path, data); !written) return written;
    return syncAll(file, path);
}

class PosixFolderLock final : public FolderLock {
public:
    explicit PosixFolderLock(Descriptor file) : file_(std::move(file)) {}

private:
    Descriptor file_;
};

void writeHolder(const Descriptor& file, const fs::path& path) {
    if (::ftruncate(file.number(), 0) != 0) return;
    const FileResult<void> written = writeAll(file, path, std::to_string(::getpid()) + "\n");
    static_cast<void>(written);  // the lock holds without it; others then do not learn the holder
}

int readHolder(const Descriptor& file) {
    std::array<char, 32> text{};
    const ssize_t count = uninterrupted([&] { return ::pread(file.number(), text.data(), text.size(), 0); });
    int holder = 0;
    if (count > 0) std::from_chars(text.data(), text.data() + count, holder);
    return std::max(holder, 0);
}

LockFailure lockFailure(const Descriptor& file, const fs::path& path, int code) {
    if (code != EWOULDBLOCK) return {.message = describe(path, code)};
    const int holder = readHolder(file);
    const std::string process = holder > 0 ? " (process " + std::to_string(holder) + ")" : "";
    return {.heldByOther = true, .holder = holder, .message = path.string() + ": locked by another program" + process};
}

}  // namespace

FileResult<std::string> PosixFileSystem::read(const fs::path& path) const {
    // A pipe without a writer must not block the opening.
    const FileResult<Descriptor> file = openFile(path, O_RDONLY | O_NONBLOCK);
    if (!file) return std::unexpected(file.error());
    const FileResult<struct stat> status = statusOf(*file, path);
    if (!status) return std::unexpected(status.error());
    if (S_ISDIR(status->st_mode)) return failure(path, EISDIR);
    if (!S_ISREG(status->st_mode)) return failure(path, EINVAL);
    return readAll(*file, path, static_cast<std::size_t>(status->st_size));
}

FileResult<FileInfo> PosixFileSystem::info(const fs::path& path) const {
    struct stat status{};
    if (::stat(path.c_str(), &status) != 0) return failure(path, errno);
    return FileInfo{
        .kind = kindOf(status), .size = static_cast<std::uint64_t>(status.st_size), .modified = modifiedOf(status)};
}

FileResult<std::vector<DirectoryEntry>> PosixFileSystem::list(const fs::path& folder) const {
    std::error_code error;
    std::vector<DirectoryEntry> entries;
    fs::directory_iterator next(folder, error);
    while (!error && next != fs::directory_iterator()) {
        entries.push_back(entryOf(*next));
        next.increment(error);
    }
    if (error) return failure(folder, error.value());
    std::ranges::sort(entries, {}, &DirectoryEntry::name);
    return entries;
}

fs::path PosixFileSystem::resolved(const fs::path& path) const {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    fs::path result = fs::weakly_canonical(absolute, error);
    if (error) return absolute;
    for (int i = 0; i < kLongestLinkChain; ++i) {
        const fs::path target = fs::read_symlink(result, error);
        if (error) return result;
        fs::path next = fs::weakly_canonical(result.parent_path() / target, error);
        if (error) return result;
        result = std::move(next);
    }
    return result;
}

FileResult<void> PosixFileSystem::createFolders(const fs::path& folder) {
    if (folder.empty()) return {};
    struct stat status{};
    if (::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) return {};
    const fs::path parent = folder.parent_path();
    if (parent != folder) {
        if (FileResult<void> created = createFolders(parent); !created) return created;
    }
    if (FileResult<void> created = createOneFolder(folder); !created) return created;
    return syncFolder(parentOf(folder));
}

FileResult<std::unique_ptr<WritableFile>> PosixFileSystem::create(const fs::path& path, const fs::path& like) {
    FileResult<Descriptor> file = openFile(path, O_WRONLY | O_CREAT | O_EXCL, kPrivateFile);
    if (!file) return std::unexpected(file.error());
    if (const FileResult<void> copied = copyPermissions(*file, path, like); !copied) {
        ::unlink(path.c_str());
        return std::unexpected(copied.error());
    }
    return std::make_unique<PosixWritableFile>(std::move(*file), path);
}

FileResult<void> PosixFileSystem::rename(const fs::path& from, const fs::path& to) {
    if (::rename(from.c_str(), to.c_str()) != 0) return failure(from, errno);
    return {};
}

FileResult<void> PosixFileSystem::remove(const fs::path& path) {
    if (std::remove(path.c_str()) != 0) return failure(path, errno);
    return {};
}

FileResult<void> PosixFileSystem::syncFolder(const fs::path& folder) {
    const FileResult<Descriptor> file = openFile(folder, O_RDONLY | O_DIRECTORY);
    if (!file) return std::unexpected(file.error());
    if (uninterrupted([&] { return ::fsync(file->number()); }) == 0) return {};
    if (errno == EINVAL) return {};  // this file system does not sync folders
    return failure(folder, errno);
}

FileResult<void> PosixFileSystem::appendLine(const fs::path& path, std::string_view line) {
    FileResult<Descriptor> file = openFile(path, O_RDWR | O_APPEND);
    if (file) return appendTo(*file, path, line);
    if (file.error().kind != FileError::Kind::notFound) return std::unexpected(file.error());
    const FileResult<Descriptor> made = openFile(path, O_RDWR | O_APPEND | O_CREAT, kPrivateFile);
    if (!made) return std::unexpected(made.error());
    if (FileResult<void> appended = appendTo(*made, path, line); !appended) return appended;
    return syncFolder(parentOf(resolved(path)));
}

std::expected<std::unique_ptr<FolderLock>, LockFailure> PosixFileSystem::lock(const fs::path& folder) {
    const fs::path path = folder / kLockFileName;
    FileResult<Descriptor> file = openFile(path, O_RDWR | O_CREAT, kPrivateFile);
    if (!file) return std::unexpected(LockFailure{.message = file.error().message});
    if (uninterrupted([&] { return ::flock(file->number(), LOCK_EX | LOCK_NB); }) != 0) {
        return std::unexpected(lockFailure(*file, path, errno));
    }
    writeHolder(*file, path);
    return std::make_unique<PosixFolderLock>(std::move(*file));
}

}  // namespace tessary
