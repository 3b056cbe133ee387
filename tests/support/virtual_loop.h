#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "platform/adapters/threads/task_schedule.h"
#include "platform/main_loop.h"

namespace tessary {

/// A main loop whose time stands still until a test moves it. Posting is safe from any thread.
class VirtualLoop final : public MainLoop {
public:
    VirtualLoop() = default;
    VirtualLoop(const VirtualLoop&) = delete;
    VirtualLoop& operator=(const VirtualLoop&) = delete;

    void post(std::move_only_function<void()> task) override { schedule_->add(now_, 0, std::move(task)); }

    DelayedTask postAfter(double seconds, std::move_only_function<void()> task) override {
        return addCancellable(schedule_, now_, seconds, std::move(task));
    }

    /// Runs what is due now. What these tasks post waits for the next call.
    void runReady() { runDue(schedule_->arrivals()); }

    /// Moves the time on and runs all that falls due on the way, each task at its own time, with what these post.
    void advance(double seconds) {
        const double end = *time_ + seconds;
        for (auto next = schedule_->next(); next && next->due <= end; next = schedule_->next()) {
            *time_ = std::max<double>(*time_, next->due);
            runDue(next->arrival + 1);
        }
        *time_ = end;
    }

    /// Seconds since the loop was made.
    [[nodiscard]] double time() const { return *time_; }

private:
    void runDue(std::uint64_t arrivalsEnd) {
        while (auto task = schedule_->takeDue(*time_, arrivalsEnd)) (*task)();
    }

    std::shared_ptr<std::atomic<double>> time_ = std::make_shared<std::atomic<double>>(0.0);
    TaskSchedule::Now now_ = [time = time_] { return time->load(); };
    std::shared_ptr<TaskSchedule> schedule_ = std::make_shared<TaskSchedule>();
};

}  // namespace tessary
