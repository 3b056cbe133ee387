#pragma once

#include <string>
#include <vector>

#include "cli/command_context.h"

namespace tessary {

/// Runs one command line, without the program's name. Gives the exit code: 0 done, 1 failed, 2 wrong usage.
[[nodiscard]] int runProgram(const std::vector<std::string>& arguments, const ProgramStreams& streams,
                             const Environment& environment);

}  // namespace tessary
