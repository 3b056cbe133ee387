#pragma once

#include <memory>

#include "platform/file_system.h"

namespace tessary {

/// Files in memory that know what a crash would leave of them: the content of a file lasts once it is synced, a name
/// once its folder is. Has no permissions and no symbolic links; a path is always taken from the root.
class MemoryFileSystem final : public FileSystem {
public:
    /// What has become of names that were not synced when the computer stops. Content that was not synced is lost.
    enum class UnsyncedNames { lost, kept };

    MemoryFileSystem();
    ~MemoryFileSystem() override;

    /// Goes back to what lasts. Ends the failing, gives back every lock; files still open fail from then on.
    void crash(UnsyncedNames names = UnsyncedNames::lost);
    /// Lets the `step`-th mutating step from now (counted from 1) and all later ones fail. Half of the data of a
    /// failing write gets in. A full disk (`noSpace`) still lets files be removed.
    void failAfter(int step, FileError::Kind kind);
    void stopFailing();
    /// Mutating steps so far, failed ones included.
    [[nodiscard]] int steps() const;

    [[nodiscard]] FileResult<std::string> read(const std::filesystem::path& path) const override;
    [[nodiscard]] FileResult<FileInfo> info(const std::filesystem::path& path) const override;
    [[nodiscard]] FileResult<std::vector<DirectoryEntry>> list(const std::filesystem::path& folder) const override;
    [[nodiscard]] std::filesystem::path resolved(const std::filesystem::path& path) const override;

    /// The names of the new folders last at once.
    [[nodiscard]] FileResult<void> createFolders(const std::filesystem::path& folder) override;
    [[nodiscard]] FileResult<std::unique_ptr<WritableFile>> create(const std::filesystem::path& path,
                                                                   const std::filesystem::path& like = {}) override;
    [[nodiscard]] FileResult<void> rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    [[nodiscard]] FileResult<void> remove(const std::filesystem::path& path) override;
    [[nodiscard]] FileResult<void> syncFolder(const std::filesystem::path& folder) override;
    [[nodiscard]] FileResult<void> appendLine(const std::filesystem::path& path, std::string_view line) override;

    [[nodiscard]] std::expected<std::unique_ptr<FolderLock>, LockFailure> lock(
        const std::filesystem::path& folder) override;

private:
    class State;
    class OpenFile;
    class Lock;

    std::shared_ptr<State> state_;  ///< shared with open files and locks, which may outlive this object
};

}  // namespace tessary
