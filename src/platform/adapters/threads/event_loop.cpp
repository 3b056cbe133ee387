#include "platform/adapters/threads/event_loop.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <utility>

namespace tessary {
namespace {

double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

EventLoop::EventLoop() : schedule_(std::make_shared<TaskSchedule>()), now_(steadySeconds) {}

void EventLoop::post(std::move_only_function<void()> task) { schedule_->add(now_, 0, std::move(task)); }

DelayedTask EventLoop::postAfter(double seconds, std::move_only_function<void()> task) {
    return addCancellable(schedule_, now_, seconds, std::move(task));
}

void EventLoop::runReady() {
    const std::uint64_t arrivalsEnd = schedule_->arrivals();
    const double horizon = now_();
    while (auto task = schedule_->takeDue(horizon, arrivalsEnd)) (*task)();
}

bool EventLoop::waitUntilReady(double maxSeconds) { return schedule_->waitUntilDue(now_, now_() + maxSeconds); }

std::optional<double> EventLoop::secondsToNextTask() const {
    const std::optional<TaskSchedule::Key> next = schedule_->next();
    if (!next) return std::nullopt;
    return std::max(0.0, next->due - now_());
}

}  // namespace tessary
