#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace tessary {

/// A delayed task that can still be called off. Letting go of the handle calls it off too. Main thread only.
class [[nodiscard]] DelayedTask {
public:
    DelayedTask() = default;
    explicit DelayedTask(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    DelayedTask(DelayedTask&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    DelayedTask& operator=(DelayedTask&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    ~DelayedTask() { cancel(); }

    /// Harmless after the task has run.
    void cancel() {
        if (const auto cancel = std::exchange(cancel_, nullptr)) cancel();
    }

private:
    std::function<void()> cancel_;
};

/// The main thread's queue of work.
class MainLoop {
public:
    virtual ~MainLoop() = default;
    /// Runs `task` on the main thread, after everything posted before it. Any thread.
    virtual void post(std::move_only_function<void()> task) = 0;
    /// Runs `task` on the main thread `seconds` from now, unless it is called off. Main thread only.
    virtual DelayedTask postAfter(double seconds, std::move_only_function<void()> task) = 0;
};

}  // namespace tessary
