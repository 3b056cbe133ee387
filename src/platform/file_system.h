#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace tessary {

/// Why a file operation failed.
struct FileError {
    enum class Kind {
        notFound,       ///< nothing lies at this path
        denied,         ///< permissions, or a read-only file system
        noSpace,        ///< disk or quota full
        alreadyExists,  ///< something lies at this path that must not be replaced
        other,
    };
    Kind kind = Kind::other;
    std::string message;  ///< for people: the path and the system's reason
};

template <class T>
using FileResult = std::expected<T, FileError>;

enum class FileKind { file, directory, other };

struct FileInfo {
    FileKind kind = FileKind::file;
    std::uint64_t size = 0;  ///< bytes
    Date modified;
};

struct DirectoryEntry {
    std::string name;
    FileKind kind = FileKind::file;
    bool isSymbolicLink = false;  ///< `kind` then tells what it leads to
};

/// A new file being written. Destroying it closes it.
class WritableFile {
public:
    virtual ~WritableFile() = default;
    [[nodiscard]] virtual FileResult<void> write(std::string_view data) = 0;
    /// Returns once the content is on the disk.
    [[nodiscard]] virtual FileResult<void> sync() = 0;
};

/// Holds the advisory lock of a folder; destroying it gives the lock back, and so does the end of the process.
class FolderLock {
public:
    virtual ~FolderLock() = default;
};

struct LockFailure {
    bool heldByOther = false;  ///< another program holds it; otherwise it could not be tried
    int holder = 0;            ///< process id of the holder, 0 when unknown
    std::string message;       ///< for people
};

/// Files and folders. Calls block; any thread, but one file is written by one thread at a time.
///
/// The operations are small steps on purpose: what is built of them (see `atomic_write.h`) is tested by failing each.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// The whole file. The string has spare capacity for the JSON reader.
    [[nodiscard]] virtual FileResult<std::string> read(const std::filesystem::path& path) const = 0;
    /// Follows symbolic links.
    [[nodiscard]] virtual FileResult<FileInfo> info(const std::filesystem::path& path) const = 0;
    /// The entries of a folder, sorted by name.
    [[nodiscard]] virtual FileResult<std::vector<DirectoryEntry>> list(const std::filesystem::path& folder) const = 0;
    /// The path with every symbolic link followed; what does not exist yet is kept as it is.
    [[nodiscard]] virtual std::filesystem::path resolved(const std::filesystem::path& path) const = 0;

    /// With its missing parents; folders that exist are fine. New folders are for the user alone (mode 700).
    [[nodiscard]] virtual FileResult<void> createFolders(const std::filesystem::path& folder) = 0;
    /// A new empty file that only the user may read, or with the permissions of `like` when that exists.
    /// Fails when something lies at `path`.
    [[nodiscard]] virtual FileResult<std::unique_ptr<WritableFile>> create(const std::filesystem::path& path,
                                                                           const std::filesystem::path& like = {}) = 0;
    /// Replaces `to` in one step when it exists.
    [[nodiscard]] virtual FileResult<void> rename(const std::filesystem::path& from,
                                                  const std::filesystem::path& to) = 0;
    /// Removes a file or an empty folder.
    [[nodiscard]] virtual FileResult<void> remove(const std::filesystem::path& path) = 0;
    /// Returns once the names in `folder` (new, renamed, removed) are on the disk.
    [[nodiscard]] virtual FileResult<void> syncFolder(const std::filesystem::path& folder) = 0;
    /// Appends `line` and a line feed in one write and syncs; a torn last line before it is ended first.
    /// Creates the file when it is missing.
    [[nodiscard]] virtual FileResult<void> appendLine(const std::filesystem::path& path, std::string_view line) = 0;

    /// Locks `folder` against other programs through a lock file inside it that holds the process id.
    [[nodiscard]] virtual std::expected<std::unique_ptr<FolderLock>, LockFailure> lock(
        const std::filesystem::path& folder) = 0;
};

/// Name of the lock file inside a locked folder.
inline constexpr std::string_view kLockFileName = ".lock";

}  // namespace tessary
