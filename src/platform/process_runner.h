#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <map>
#include <stop_token>
#include <string>
#include <vector>

namespace tessary {

struct ProcessRequest {
    std::filesystem::path program;  ///< absolute
    std::vector<std::string> arguments = {};
    /// Set on top of the inherited environment.
    std::map<std::string, std::string> environment = {};
    std::filesystem::path standardInput = {};  ///< a file; none when empty
    double timeLimit = 300;                    ///< seconds
};

/// How a child ended by itself.
struct ProcessResult {
    int exitStatus = 0;  ///< 128 and the signal's number when a signal ended it
    std::string output;
    std::string errors;
};

struct ProcessFailure {
    enum class Kind {
        cancelled,
        timedOut,
        tooMuchOutput,  ///< past `kLargestProcessOutput`
        notStarted,
    };
    Kind kind = Kind::notStarted;
    std::string message;  ///< for people
};

/// Bytes of output and errors together.
inline constexpr std::size_t kLargestProcessOutput = std::size_t{32} * 1024 * 1024;

/// Runs child processes. However a run ends, nothing of the child's process group is left behind. Any thread.
class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;
    /// Blocks until the child ends; returns within 50 ms when `stop` is requested.
    [[nodiscard]] virtual std::expected<ProcessResult, ProcessFailure> run(const ProcessRequest& request,
                                                                           std::stop_token stop) = 0;
    /// A file that this user may run.
    [[nodiscard]] virtual bool isExecutable(const std::filesystem::path& program) const = 0;
};

}  // namespace tessary
