#pragma once

#include <optional>
#include <string>

#include "cli/command_context.h"

namespace tessary {

/// The first line of standard input, or of what is typed after `prompt` on a terminal, where it is not shown. Absent
/// when there is none, or the user gave up. The terminal is left as it was.
[[nodiscard]] std::optional<std::string> readSecret(const ProgramStreams& streams, const std::string& prompt);

}  // namespace tessary
