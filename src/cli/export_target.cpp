#include "cli/export_target.h"

#include "app/export_place.h"

namespace tessary {

std::filesystem::path exportTarget(CommandContext& context, const std::string& file, std::string_view proposedName) {
    return valueOrFail(exportPlace(file, proposedName, context.paths().library, context.system().files));
}

}  // namespace tessary
