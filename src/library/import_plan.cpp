#include "library/import_plan.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/text.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr auto kNoteExtensions = std::to_array<std::string_view>({".md", ".markdown", ".txt"});

bool isNote(const fs::path& path) {
    return std::ranges::find(kNoteExtensions, asciiLowered(path.extension().string())) != kNoteExtensions.end();
}

PlannedPage pageOfNote(const fs::path& path) {
    return {.name = scrubbedUtf8(path.stem().string()), .note = path, .subpages = {}};
}

class Planner {
public:
    Planner(const FileSystem& files, ImportProblems& problems, const std::stop_token& stop)
        : files_(files), problems_(problems), stop_(stop) {}

    /// In the order of names. Folders without any note are left out.
    std::vector<PlannedPage> pagesIn(const fs::path& folder, int depth = 0) {
        std::vector<PlannedPage> pages;
        const FileResult<std::vector<DirectoryEntry>> entries = files_.list(folder);
        if (!entries) problems_.add(folder, "cannot be read: " + entries.error().message);
        if (!entries || stop_.stop_requested()) return pages;
        for (const DirectoryEntry& entry : *entries) addEntry(pages, entry, folder / entry.name, depth);
        giveFoldersTheirNotes(pages);
        return pages;
    }

private:
    void addEntry(std::vector<PlannedPage>& pages, const DirectoryEntry& entry, const fs::path& path, int depth) {
        if (entry.name.starts_with('.')) return;
        if (entry.kind == FileKind::directory) {
            if (!entry.isSymbolicLink) addFolder(pages, path, depth + 1);
        } else if (isNote(path)) {
            if (entry.kind == FileKind::file) pages.push_back(pageOfNote(path));
            if (entry.kind == FileKind::other) problems_.add(path, "is not a file that can be read");
        }
    }

    void addFolder(std::vector<PlannedPage>& pages, const fs::path& path, int depth) {
        if (depth > kDeepestImportedFolder) return problems_.add(path, "lies too deep inside other folders");
        std::vector<PlannedPage> inside = pagesIn(path, depth);
        if (inside.empty()) return;
        pages.push_back({.name = shownName(path), .note = {}, .isFolder = true, .subpages = std::move(inside)});
    }

    /// A note beside a folder goes to the first folder of its name.
    static void giveFoldersTheirNotes(std::vector<PlannedPage>& pages) {
        std::unordered_map<std::string, PlannedPage*> beside;
        for (PlannedPage& page : pages) {
            if (!page.isFolder) beside.try_emplace(asciiLowered(page.name), &page);
        }
        for (PlannedPage& folder : pages) {
            if (!folder.isFolder || takeNoteInside(folder, folder.name)) continue;
            if (const auto found = beside.find(asciiLowered(folder.name)); found != beside.end()) {
                folder.note = std::exchange(found->second->note, {});
                beside.erase(found);
            } else if (!takeNoteInside(folder, "index")) {
                takeNoteInside(folder, "readme");
            }
        }
        std::erase_if(pages, [](const PlannedPage& page) { return !page.isFolder && page.note.empty(); });
    }

    static bool takeNoteInside(PlannedPage& folder, std::string_view name) {
        const auto found = std::ranges::find_if(folder.subpages, [&](const PlannedPage& page) {
            return !page.isFolder && equalsIgnoringAsciiCase(page.name, name);
        });
        if (found == folder.subpages.end()) return false;
        folder.note = found->note;
        folder.subpages.erase(found);
        return true;
    }

    const FileSystem& files_;
    ImportProblems& problems_;
    const std::stop_token& stop_;
};

/// Without a slash at the end, so that it has a name if it can have one.
fs::path tidied(const fs::path& given) {
    const fs::path normal = given.lexically_normal();
    return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

}  // namespace

std::optional<ImportPlan> planImport(const fs::path& given, const FileSystem& files, ImportProblems& problems,
                                     const std::stop_token& stop) {
    const fs::path path = tidied(given);
    const auto refuse = [&](std::string_view why) {
        problems.add(path, why);
        return std::nullopt;
    };
    if (path.empty()) return refuse("does not exist");
    const FileResult<FileInfo> info = files.info(path);
    if (!info && info.error().kind == FileError::Kind::notFound) return refuse("does not exist");
    if (!info) return refuse("cannot be read: " + info.error().message);
    if (info->kind == FileKind::directory) {
        return ImportPlan{.path = path, .isFolder = true, .pages = Planner(files, problems, stop).pagesIn(path)};
    }
    if (info->kind != FileKind::file) return refuse("is neither a file nor a folder");
    if (!isNote(path)) return refuse("is no note: only .md, .markdown and .txt can be imported");
    return ImportPlan{.path = path, .isFolder = false, .pages = {pageOfNote(path)}};
}

std::size_t noteCount(const std::vector<PlannedPage>& pages) {
    std::size_t count = 0;
    for (const PlannedPage& page : pages) count += (page.note.empty() ? 0 : 1) + noteCount(page.subpages);
    return count;
}

}  // namespace tessary
