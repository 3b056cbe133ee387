#pragma once

#include "platform/sleeper.h"

namespace tessary {

/// Puts the calling thread itself to sleep. Nothing to wait for when `seconds` is negative or no number.
class ThreadSleeper final : public Sleeper {
public:
    void sleep(double seconds, std::stop_token stop) override;
};

}  // namespace tessary
