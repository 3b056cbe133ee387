#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "cli/command_context.h"

namespace tessary {

/// Where an export to `file` goes: a folder stands for a file of the proposed name in it. Throws CommandFailure for a
/// place inside the library, whose files must never be replaced by an export.
[[nodiscard]] std::filesystem::path exportTarget(CommandContext& context, const std::string& file,
                                                 std::string_view proposedName);

}  // namespace tessary
