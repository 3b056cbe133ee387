#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "library/import_problems.h"
#include "platform/file_system.h"

/// Which files become which pages. Reads folders, but no notes.
namespace tessary {

inline constexpr int kDeepestImportedFolder = 64;  ///< below the one the user gave

/// A page to be: a note, a folder, or a folder with the note that tells its page.
struct PlannedPage {
    std::string name;            ///< its title unless the note has one
    std::filesystem::path note;  ///< empty for a mere folder
    bool isFolder = false;
    std::vector<PlannedPage> subpages;
};

/// What becomes of one path that the user gave.
struct ImportPlan {
    std::filesystem::path path;
    bool isFolder = false;
    std::vector<PlannedPage> pages;  ///< in the order of names; folders without any note are left out
};

/// Nothing for a path that cannot be imported, which is a problem then. After a stop the plan has holes.
[[nodiscard]] std::optional<ImportPlan> planImport(const std::filesystem::path& given, const FileSystem& files,
                                                   ImportProblems& problems, const std::stop_token& stop);

/// With those of the subpages.
[[nodiscard]] std::size_t noteCount(const std::vector<PlannedPage>& pages);

}  // namespace tessary
