#include "cli/export_target.h"

namespace tessary {
namespace {

bool isInside(const std::filesystem::path& path, const std::filesystem::path& folder) {
    const std::filesystem::path relative = path.lexically_relative(folder);
    return !relative.empty() && *relative.begin() != "..";
}

}  // namespace

std::filesystem::path exportTarget(CommandContext& context, const std::string& file, std::string_view proposedName) {
    const FileSystem& files = context.system().files;
    std::filesystem::path target = files.resolved(file);
    const FileResult<FileInfo> info = files.info(target);
    if (info && info->kind == FileKind::directory) target /= proposedName;
    if (isInside(target, files.resolved(context.paths().library.base))) {
        throw CommandFailure("An export can't go into the library's own folder. Choose another place.");
    }
    return target;
}

}  // namespace tessary
