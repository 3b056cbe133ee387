#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "cli/program.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    const tessary::ProgramStreams streams{.input = STDIN_FILENO,
                                          .out = std::cout,
                                          .err = std::cerr,
                                          .outIsTerminal = isatty(STDOUT_FILENO) == 1,
                                          .errIsTerminal = isatty(STDERR_FILENO) == 1};
    const tessary::Environment environment = [](std::string_view name) -> std::optional<std::string> {
        const char* const value = std::getenv(std::string(name).c_str());
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    };
    const int code = tessary::runProgram({argv + 1, argv + argc}, streams, environment);
    std::cout.flush();
    return std::cout.good() ? code : 1;
}
