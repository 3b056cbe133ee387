#include "platform/atomic_write.h"

#include <functional>
#include <string>

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTemporaryPrefix = ".tessary-";
constexpr std::string_view kTemporarySuffix = ".tmp";
constexpr std::size_t kLongestNameTaken = 200;  // bytes; with prefix and suffix it must stay within 255

fs::path temporaryFor(const fs::path& target) {
    std::string name = target.filename().string();
    if (name.size() > kLongestNameTaken) name = std::to_string(std::hash<std::string>{}(name));
    return target.parent_path() / (std::string(kTemporaryPrefix) + name + std::string(kTemporarySuffix));
}

FileResult<void> writeAndSync(FileSystem& files, const fs::path& temporary, const fs::path& target,
                              std::string_view data) {
    FileResult<std::unique_ptr<WritableFile>> file = files.create(temporary, target);
    if (!file && file.error().kind == FileError::Kind::alreadyExists) {
        // Left by a crash: this process is the only writer of the target.
        if (FileResult<void> removed = files.remove(temporary); !removed) return removed;
        file = files.create(temporary, target);
    }
    if (!file) return std::unexpected(file.error());
    if (FileResult<void> written = (*file)->write(data); !written) return written;
    return (*file)->sync();
}

}  // namespace

FileResult<void> writeAtomically(FileSystem& files, const fs::path& path, std::string_view data) {
    const fs::path target = files.resolved(path);
    const fs::path temporary = temporaryFor(target);
    FileResult<void> result = writeAndSync(files, temporary, target, data);
    if (result) result = files.rename(temporary, target);
    if (!result) {
        const FileResult<void> removed = files.remove(temporary);
        static_cast<void>(removed);  // the first error is the one to tell; a left-over is cleared at the next start
        return result;
    }
    return files.syncFolder(target.parent_path());
}

FileResult<void> copyFile(FileSystem& files, const fs::path& from, const fs::path& to) {
    const FileResult<std::string> content = files.read(from);
    if (!content) return std::unexpected(content.error());
    if (exists(files, to)) {
        return std::unexpected(FileError{FileError::Kind::alreadyExists, to.string() + ": already exists"});
    }
    return writeAtomically(files, to, *content);
}

void removeStaleTemporaries(FileSystem& files, const fs::path& folder) {
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(folder);
    if (!entries) return;
    for (const DirectoryEntry& entry : *entries) {
        if (!entry.name.starts_with(kTemporaryPrefix) || !entry.name.ends_with(kTemporarySuffix)) continue;
        const FileResult<void> removed = files.remove(folder / entry.name);
        static_cast<void>(removed);  // a left-over that stays does no harm
    }
}

bool exists(const FileSystem& files, const fs::path& path) {
    const FileResult<FileInfo> info = files.info(path);
    return info || info.error().kind != FileError::Kind::notFound;
}

bool isPlainFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

}  // namespace tessary
