#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

#include "platform/serial_queue.h"

namespace tessary {

/// A serial queue with a thread of its own.
class ThreadQueue final : public SerialQueue {
public:
    /// `name` is for people; the thread carries as much of it as the system allows.
    explicit ThreadQueue(std::string name);

    void post(std::move_only_function<void()> task) override;
    void drain() override;

    [[nodiscard]] const std::string& name() const { return name_; }

private:
    void work(const std::stop_token& stop);
    void runFirst(std::unique_lock<std::mutex>& lock);

    std::string name_;
    std::mutex mutex_;
    std::condition_variable_any arrived_;
    std::condition_variable finished_;
    std::deque<std::move_only_function<void()>> tasks_;
    std::uint64_t postedCount_ = 0;
    std::uint64_t finishedCount_ = 0;
    std::jthread thread_;  // last: it is joined before the rest goes away
};

}  // namespace tessary
