#pragma once

#include <functional>

namespace tessary {

/// Work off the main thread, one task after another in the order of arrival.
/// Destroying a queue first runs what was posted to it.
class SerialQueue {
public:
    virtual ~SerialQueue() = default;
    /// Any thread. `task` must not throw.
    virtual void post(std::move_only_function<void()> task) = 0;
    /// Returns when everything posted so far has run. Never call it from a task of the same queue.
    virtual void drain() = 0;
};

}  // namespace tessary
