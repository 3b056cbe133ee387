#pragma once

#include <stop_token>

namespace tessary {

/// Lets a job wait. Any thread but the main one.
class Sleeper {
public:
    virtual ~Sleeper() = default;
    /// Returns after `seconds`, or at once when `stop` is requested.
    virtual void sleep(double seconds, std::stop_token stop) = 0;
};

}  // namespace tessary
