#pragma once

#include "platform/file_system.h"

namespace tessary {

/// The computer's own files. Folders are locked with `flock`; the lock file stays when the lock is given back.
class PosixFileSystem final : public FileSystem {
public:
    [[nodiscard]] FileResult<std::string> read(const std::filesystem::path& path) const override;
    [[nodiscard]] FileResult<FileInfo> info(const std::filesystem::path& path) const override;
    [[nodiscard]] FileResult<std::vector<DirectoryEntry>> list(const std::filesystem::path& folder) const override;
    /// Always absolute. The target of a link that leads nowhere yet is where a file would be made through it.
    [[nodiscard]] std::filesystem::path resolved(const std::filesystem::path& path) const override;

    /// The names of the new folders are on the disk afterwards.
    [[nodiscard]] FileResult<void> createFolders(const std::filesystem::path& folder) override;
    [[nodiscard]] FileResult<std::unique_ptr<WritableFile>> create(const std::filesystem::path& path,
                                                                   const std::filesystem::path& like = {}) override;
    [[nodiscard]] FileResult<void> rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    [[nodiscard]] FileResult<void> remove(const std::filesystem::path& path) override;
    [[nodiscard]] FileResult<void> syncFolder(const std::filesystem::path& folder) override;
    [[nodiscard]] FileResult<void> appendLine(const std::filesystem::path& path, std::string_view line) override;

    [[nodiscard]] std::expected<std::unique_ptr<FolderLock>, LockFailure> lock(
        const std::filesystem::path& folder) override;
};

}  // namespace tessary
