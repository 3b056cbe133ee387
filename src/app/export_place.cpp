#include "app/export_place.h"

namespace tessary {
namespace {

bool isInside(const std::filesystem::path& path, const std::filesystem::path& folder) {
    const std::filesystem::path relative = path.lexically_relative(folder);
    return !relative.empty() && *relative.begin() != "..";
}

}  // namespace

std::expected<std::filesystem::path, std::string> exportPlace(const std::filesystem::path& file,
                                                              std::string_view proposedName,
                                                              const LibraryFolders& folders, const FileSystem& files) {
    std::filesystem::path place = files.resolved(file);
    const FileResult<FileInfo> info = files.info(place);
    if (info && info->kind == FileKind::directory) place /= proposedName;
    if (isInside(place, files.resolved(folders.base))) {
        return std::unexpected("An export can't go into the library's own folder. Choose another place.");
    }
    return place;
}

}  // namespace tessary
