#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/adapters/threads/task_schedule.h"
#include "platform/main_loop.h"

namespace tessary {

/// The main loop, in steps for a program that also waits for other things. All but `post` is for the main thread.
/// What has not run when the loop is destroyed is dropped.
class EventLoop final : public MainLoop {
public:
    EventLoop();

    void post(std::move_only_function<void()> task) override;
    DelayedTask postAfter(double seconds, std::move_only_function<void()> task) override;

    /// Runs what is due now. What these tasks post waits for the next call, so this always returns.
    void runReady();

    /// Sleeps until something is due, at most `maxSeconds`. Tells whether something is due.
    bool waitUntilReady(double maxSeconds);

    /// 0 when something is due, absent when nothing is scheduled.
    [[nodiscard]] std::optional<double> secondsToNextTask() const;

private:
    std::shared_ptr<TaskSchedule> schedule_;
    TaskSchedule::Now now_;
};

}  // namespace tessary
