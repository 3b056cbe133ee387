#pragma once

#include <iosfwd>
#include <mutex>

#include "platform/console.h"

namespace tessary {

/// Prints to a stream that outlives it, each line at once.
class StreamConsole final : public Console {
public:
    explicit StreamConsole(std::ostream& stream) : stream_(stream) {}

    void print(std::string_view message) override;

private:
    std::mutex mutex_;
    std::ostream& stream_;
};

}  // namespace tessary
