#include "library/image_importer.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "library/import_plan.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr auto kImageExtensions = std::to_array<std::string_view>(
    {".png", ".jpg", ".jpeg", ".gif", ".webp", ".svg", ".heic", ".bmp", ".tiff", ".avif"});
constexpr auto kAttachmentFolders = std::to_array<std::string_view>(
    {"attachments", "Attachments", "assets", "images", "img", "media", "files", "resources", "_resources"});
constexpr std::string_view kOutside = "lies outside the imported folder and was not copied";

bool isImage(const fs::path& path) {
    return std::ranges::find(kImageExtensions, asciiLowered(path.extension().string())) != kImageExtensions.end();
}

bool isFileAddress(std::string_view target) { return equalsIgnoringAsciiCase(target.substr(0, 5), "file:"); }

/// An address with a scheme, other than of a file. A single letter is a drive of another system.
bool isOfTheWeb(std::string_view target) {
    if (target.starts_with("//")) return true;
    const std::size_t end = asciiLowered(target).find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789+-.");
    return end != std::string::npos && end > 1 && target[end] == ':' && !isFileAddress(target);
}

}  // namespace

ImageImporter::ImageImporter(JournalStore& store, const FileSystem& files, fs::path root, ImageSearch search)
    : store_(store), files_(files), root_(std::move(root)), search_(search), realRoot_(files.resolved(root_)) {}

StoredImage ImageImporter::take(const ImageReference& image, const fs::path& noteFolder) {
    if (image.target.empty() || isOfTheWeb(image.target)) return {};
    const auto failed = [&](std::string_view why) {
        return StoredImage{{}, "shows the image \"" + image.target + "\", which " + std::string(why)};
    };
    const fs::path inRoot = (noteFolder.lexically_relative(root_) / image.target).lexically_normal();
    if (isFileAddress(image.target) || inRoot.is_absolute() || *inRoot.begin() == "..") return failed(kOutside);
    if (!isImage(image.target)) {
        return image.form == ImageForm::wiki ? StoredImage{} : failed("is of no known kind of image");
    }
    const Found found = find(image, noteFolder);
    if (found.path.empty()) return failed(found.isOutside ? kOutside : "was not found");
    const std::expected<std::string, Refusal> name = stored(found.path);
    return name ? StoredImage{*name, {}} : failed("could not be copied: " + name.error());
}

ImageImporter::Found ImageImporter::find(const ImageReference& image, const fs::path& noteFolder) {
    Found found;
    if (tryPath(noteFolder / image.target, found) || tryPath(root_ / image.target, found)) return found;
    for (const std::string_view folder : kAttachmentFolders) {
        if (tryPath(noteFolder / folder / image.target, found)) return found;
        if (tryPath(root_ / folder / image.target, found)) return found;
    }
    if (image.form != ImageForm::wiki || search_ == ImageSearch::nearNote) return found;
    if (!namesKnown_) learnNames();
    const auto named = byName_.find(asciiLowered(fs::path(image.target).filename().string()));
    if (named != byName_.end()) tryPath(named->second, found);
    return found;
}

bool ImageImporter::tryPath(const fs::path& path, Found& found) const {
    const FileResult<FileInfo> info = files_.info(path);
    if (!info || info->kind != FileKind::file) return false;
    const fs::path real = files_.resolved(path);
    const auto [rootEnd, rest] = std::ranges::mismatch(realRoot_, real);
    const bool isInside = rootEnd == realRoot_.end();
    found = isInside ? Found{path, false} : Found{{}, true};
    return isInside;
}

/// The shallowest image of a name counts.
void ImageImporter::learnNames() {
    namesKnown_ = true;
    std::vector<fs::path> level{root_};
    for (int depth = 0; !level.empty() && depth <= kDeepestImportedFolder; ++depth) {
        std::vector<fs::path> deeper;
        for (const fs::path& folder : level) learnNamesIn(folder, deeper);
        level = std::move(deeper);
    }
}

void ImageImporter::learnNamesIn(const fs::path& folder, std::vector<fs::path>& deeper) {
    const FileResult<std::vector<DirectoryEntry>> entries = files_.list(folder);
    if (!entries) return;
    for (const DirectoryEntry& entry : *entries) {
        if (entry.name.starts_with('.')) continue;
        const fs::path path = folder / entry.name;
        if (entry.kind == FileKind::directory && !entry.isSymbolicLink) deeper.push_back(path);
        if (entry.kind != FileKind::file || !isImage(path)) continue;
        byName_.try_emplace(asciiLowered(entry.name), path);
    }
}

std::expected<std::string, Refusal> ImageImporter::stored(const fs::path& path) {
    const auto known = storedNames_.find(path.lexically_normal().string());
    if (known != storedNames_.end()) return known->second;
    std::expected<std::string, Refusal> name = store_.addMedia(MediaKind::image, path);
    if (name) storedNames_.emplace(path.lexically_normal().string(), *name);
    return name;
}

}  // namespace tessary
