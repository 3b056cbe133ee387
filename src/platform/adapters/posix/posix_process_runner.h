#pragma once

#include "platform/process_runner.h"

namespace tessary {

/// Each child leads a process group of its own, sees only the descriptors 0, 1 and 2, and starts with default signals.
/// A run ends with the child itself: what its own children still print is not waited for, and they are killed. Only a
/// process that left the group outlives it.
class PosixProcessRunner final : public ProcessRunner {
public:
    [[nodiscard]] std::expected<ProcessResult, ProcessFailure> run(const ProcessRequest& request,
                                                                   std::stop_token stop) override;
    [[nodiscard]] bool isExecutable(const std::filesystem::path& program) const override;
};

}  // namespace tessary
