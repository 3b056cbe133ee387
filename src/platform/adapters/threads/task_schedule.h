#pragma once

#include <algorithm>
#include <chrono>
#include <compare>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/main_loop.h"

namespace tessary {

/// Tasks by the time they fall due, then by arrival. Times are seconds on whatever clock the owner keeps.
class TaskSchedule {
public:
    using Task = std::move_only_function<void()>;
    using Now = std::function<double()>;

    struct Key {
        double due = 0;
        std::uint64_t arrival = 0;

        friend auto operator<=>(const Key&, const Key&) = default;
    };

    /// `now` is asked under the lock, so that tasks of several threads fall due in the order of their arrival.
    Key add(const Now& now, double delay, Task task) {
        const std::lock_guard lock(mutex_);
        const Key key{now() + (delay > 0 ? delay : 0), arrivals_++};
        tasks_.emplace(key, std::move(task));
        changed_.notify_one();
        return key;
    }

    void cancel(const Key& key) { static_cast<void>(extract(key)); }

    [[nodiscard]] std::uint64_t arrivals() const {
        const std::lock_guard lock(mutex_);
        return arrivals_;
    }

    [[nodiscard]] std::optional<Key> next() const {
        const std::lock_guard lock(mutex_);
        return nextLocked();
    }

    /// The next task, when it is due by `horizon` and came before the arrival number `arrivalsEnd`.
    [[nodiscard]] std::optional<Task> takeDue(double horizon, std::uint64_t arrivalsEnd) {
        const std::lock_guard lock(mutex_);
        const std::optional<Key> key = nextLocked();
        if (!key || key->due > horizon || key->arrival >= arrivalsEnd) return std::nullopt;
        return std::move(tasks_.extract(tasks_.begin()).mapped());
    }

    /// Blocks until a task is due or `deadline` has come; tells whether one is due.
    bool waitUntilDue(const Now& now, double deadline) {
        constexpr double kLongestWait = 3600;
        std::unique_lock lock(mutex_);
        while (true) {
            const double present = now();
            const double due = tasks_.empty() ? deadline : tasks_.begin()->first.due;
            if (!tasks_.empty() && due <= present) return true;
            if (!(present < deadline)) return false;
            const double wait = std::min({due - present, deadline - present, kLongestWait});
            changed_.wait_for(lock, std::chrono::duration<double>(wait));
        }
    }

private:
    using Tasks = std::map<Key, Task>;

    [[nodiscard]] std::optional<Key> nextLocked() const {
        return tasks_.empty() ? std::nullopt : std::optional<Key>(tasks_.begin()->first);
    }

    /// Hands the task out, as its end may cancel others and must not happen under the lock.
    Tasks::node_type extract(const Key& key) {
        const std::lock_guard lock(mutex_);
        return tasks_.extract(key);
    }

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    Tasks tasks_;
    std::uint64_t arrivals_ = 0;
};

/// Schedules a task that may be called off, even after the schedule is gone.
inline DelayedTask addCancellable(const std::shared_ptr<TaskSchedule>& schedule, const TaskSchedule::Now& now,
                                  double delay, TaskSchedule::Task task) {
    const TaskSchedule::Key key = schedule->add(now, delay, std::move(task));
    return DelayedTask([weak = std::weak_ptr(schedule), key] {
        if (const std::shared_ptr<TaskSchedule> present = weak.lock()) present->cancel(key);
    });
}

}  // namespace tessary
