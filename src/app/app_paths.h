#pragma once

#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "library/library_folders.h"
#include "platform/file_system.h"

namespace tessary {

/// The value of an environment variable; absent when it is not set.
using Environment = std::function<std::optional<std::string>(std::string_view name)>;

/// Where everything of one user lies.
struct AppPaths {
    LibraryFolders library;
    std::filesystem::path settings;   ///< the INI file
    std::filesystem::path documents;  ///< where the automatic backup goes
    std::filesystem::path home;       ///< below it lies the container of the sandboxed days, if there is one
};

/// Everything below one folder that goes with the user, which must be there.
[[nodiscard]] std::expected<AppPaths, std::string> portablePaths(const std::filesystem::path& home,
                                                                 const FileSystem& files);

/// The places of the desktop: XDG base directories, and Documents as the desktop names it.
[[nodiscard]] std::expected<AppPaths, std::string> desktopPaths(const Environment& environment,
                                                                const FileSystem& files);

}  // namespace tessary
