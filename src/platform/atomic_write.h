#pragma once

#include <filesystem>
#include <string_view>

#include "platform/file_system.h"

namespace tessary {

/// Puts `data` at `path` so that a crash at any moment leaves the old file or the new one, whole: writes a temporary
/// file in the same folder, syncs it, renames it over, syncs the folder. Permissions are kept and symbolic links
/// followed. On failure the temporary file is removed and the old file untouched, except when only the last step, the
/// syncing of the folder, fails: the new content is in place then, and a crash may still bring the old one back. So a
/// failure never tells which of the two is there, and the caller writes again.
[[nodiscard]] FileResult<void> writeAtomically(FileSystem& files, const std::filesystem::path& path,
                                               std::string_view data);

/// Copies one file, as carefully as `writeAtomically`, to a place where nothing lies yet.
[[nodiscard]] FileResult<void> copyFile(FileSystem& files, const std::filesystem::path& from,
                                        const std::filesystem::path& to);

/// Removes the temporary files that a crash has left in `folder`. Only for the holder of the folder's lock.
void removeStaleTemporaries(FileSystem& files, const std::filesystem::path& folder);

[[nodiscard]] bool exists(const FileSystem& files, const std::filesystem::path& path);

/// A name without folders: not empty, not "." or "..", without "/", "\" and NUL. Media are only ever addressed so.
[[nodiscard]] bool isPlainFileName(std::string_view name);

}  // namespace tessary
