#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>

#include "library/library_folders.h"
#include "platform/file_system.h"

namespace tessary {

/// Where an export to `file` goes: a folder stands for a file of the proposed name in it. Refused inside the library,
/// whose files must never be replaced by an export; the error is for the user.
[[nodiscard]] std::expected<std::filesystem::path, std::string> exportPlace(const std::filesystem::path& file,
                                                                            std::string_view proposedName,
                                                                            const LibraryFolders& folders,
                                                                            const FileSystem& files);

}  // namespace tessary
