#include "library/json_file.h"

#include "platform/atomic_write.h"

namespace tessary {

namespace fs = std::filesystem;

/// Outlives the file object while writes are queued.
struct GuardedFile::SaveState {
    mutable std::mutex mutex;
    std::string error;

    void set(std::string text) {
        const std::lock_guard lock(mutex);
        error = std::move(text);
    }
    std::string get() const {
        const std::lock_guard lock(mutex);
        return error;
    }
};

namespace {

constexpr std::string_view kCorruptMark = "-corrupt-";
constexpr std::string_view kExtension = ".json";

std::expected<void, std::string> writeWhole(FileSystem& files, const fs::path& path,
                                            const std::expected<std::string, std::string>& content) {
    if (!content) return std::unexpected(content.error());
    if (const FileResult<void> folder = files.createFolders(path.parent_path()); !folder) {
        return std::unexpected(folder.error().message);
    }
    if (const FileResult<void> written = writeAtomically(files, path, *content); !written) {
        return std::unexpected(written.error().message);
    }
    return {};
}

/// A copy made earlier of the very same content.
std::optional<fs::path> existingCopy(const FileSystem& files, const fs::path& folder, std::string_view prefix,
                                     std::string_view content) {
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(folder);
    if (!entries) return std::nullopt;
    for (const DirectoryEntry& entry : *entries) {
        if (entry.kind != FileKind::file) continue;
        if (!entry.name.starts_with(prefix) || !entry.name.ends_with(kExtension)) continue;
        const fs::path path = folder / entry.name;
        const FileResult<FileInfo> info = files.info(path);
        if (!info || info->size != content.size()) continue;
        const FileResult<std::string> copy = files.read(path);
        if (copy && *copy == content) return path;
    }
    return std::nullopt;
}

fs::path freePath(const FileSystem& files, const fs::path& folder, const std::string& stem) {
    fs::path path = folder / (stem + std::string(kExtension));
    for (int number = 2; exists(files, path); ++number) {
        path = folder / (stem + "-" + std::to_string(number) + std::string(kExtension));
    }
    return path;
}

}  // namespace

GuardedFile::GuardedFile(fs::path path, std::string saveFailure, StoreServices services, SerialQueue& queue,
                         StoreAccess access)
    : path_(std::move(path)),
      saveFailure_(std::move(saveFailure)),
      services_(services),
      queue_(queue),
      access_(access),
      state_(std::make_shared<SaveState>()) {}

std::optional<std::string> GuardedFile::readForLoad() {
    FileResult<std::string> content = services_.files.read(path_);
    if (content) {
        outcome_ = LoadOutcome::loaded;
        return std::move(*content);
    }
    if (content.error().kind == FileError::Kind::notFound) {
        outcome_ = LoadOutcome::missing;
        return std::nullopt;
    }
    outcome_ = LoadOutcome::unreadable;
    loadProblem_ = name() + ": " + content.error().message;
    services_.console.print("Notara: " + name() + " could not be read — " + content.error().message);
    return std::nullopt;
}

void GuardedFile::contentWasUndecodable(const std::string& content, const DecodingError& error) {
    loadProblem_ = error.describe(name());
    const bool safe = access_ == StoreAccess::readOnly || preserve(content);
    outcome_ = safe ? LoadOutcome::undecodable : LoadOutcome::unreadable;
}

ReadContext GuardedFile::readContext() const {
    return {.now = services_.clock.now(), .freshId = [&ids = services_.ids] { return ids.next(); }};
}

bool GuardedFile::preserve(const std::string& content) {
    const fs::path folder = path_.parent_path();
    const std::string prefix = path_.stem().string() + std::string(kCorruptMark);
    std::optional<fs::path> copy = existingCopy(services_.files, folder, prefix, content);
    if (!copy) {
        const std::string stamp = timeStamp(services_.calendar.civilTime(services_.clock.now()));
        copy = freePath(services_.files, folder, prefix + stamp);
        if (const FileResult<void> made = writeAtomically(services_.files, *copy, content); !made) {
            services_.console.print("Notara: " + name() + " could not be preserved — " + made.error().message);
            return false;
        }
    }
    services_.console.print("Notara: " + name() + " could not be decoded — copy preserved at " + copy->string());
    return true;
}

bool GuardedFile::mayReplaceFile() {
    if (outcome_ != LoadOutcome::unreadable) return true;
    const FileResult<std::string> content = services_.files.read(path_);
    if (!content) {
        if (content.error().kind != FileError::Kind::notFound) return false;
    } else if (!preserve(*content)) {
        return false;
    }
    outcome_ = LoadOutcome::undecodable;
    return true;
}

void GuardedFile::save(std::move_only_function<std::expected<std::string, std::string>()> encode,
                       std::move_only_function<bool()> mayWrite, std::move_only_function<void()> written) {
    if (access_ == StoreAccess::readOnly) return;
    if (!mayReplaceFile()) {
        const std::string error = name() + " is neither readable nor preserved and stays as it is";
        services_.console.print(saveFailure_ + error);
        return state_->set(error);
    }
    queue_.post([encode = std::move(encode), mayWrite = std::move(mayWrite), written = std::move(written),
                 state = state_, path = path_, failure = saveFailure_, &files = services_.files,
                 &console = services_.console]() mutable {
        if (mayWrite && !mayWrite()) {
            return state->set(path.filename().string() + " waits until the file before it is saved");
        }
        const std::expected<void, std::string> result = writeWhole(files, path, encode());
        state->set(result ? std::string() : result.error());
        if (!result) return console.print(failure + result.error());
        if (written) written();
    });
}

bool GuardedFile::lastSaveFailed() const { return !lastSaveError().empty(); }

std::string GuardedFile::lastSaveError() const { return state_->get(); }

}  // namespace tessary
