#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/file_system.h"

namespace tessary {

/// Why a file can't be attached as a PDF, for the user; absent when it can. A damaged PDF may be worth keeping, a file
/// of another kind is a mistake. Reads the file.
[[nodiscard]] std::optional<std::string> whyNoPdf(const FileSystem& files, const std::filesystem::path& file);

}  // namespace tessary
