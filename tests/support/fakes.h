#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/clock.h"
#include "platform/console.h"
#include "platform/id_source.h"
#include "platform/serial_queue.h"

namespace tessary {

class ManualClock final : public Clock {
public:
    explicit ManualClock(Date now = {}) : now_(now) {}

    [[nodiscard]] Date now() const override { return now_; }
    void set(Date now) { now_ = now; }
    void advance(double seconds) { now_ = now_ + seconds; }

private:
    Date now_;
};

/// 00000000-0000-4000-8000-000000000001 and on.
class SequentialIds final : public IdSource {
public:
    [[nodiscard]] Uuid next() override {
        ++count_;
        std::array<std::uint8_t, 16> bytes{};
        for (std::size_t i = 0; i < 4; ++i) bytes[15 - i] = static_cast<std::uint8_t>(count_ >> (8 * i));
        return Uuid::fromRandomBytes(bytes);
    }

private:
    std::uint32_t count_ = 0;
};

class RecordingConsole final : public Console {
public:
    void print(std::string_view message) override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(message);
    }

    [[nodiscard]] std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

/// Runs tasks at once on the calling thread; what a task posts runs right after it.
class InlineQueue final : public SerialQueue {
public:
    void post(std::move_only_function<void()> task) override {
        tasks_.push_back(std::move(task));
        if (!std::exchange(running_, true)) runAll();
    }

    void drain() override {}

private:
    void runAll() {
        for (; !tasks_.empty(); tasks_.pop_front()) tasks_.front()();
        running_ = false;
    }

    std::deque<std::move_only_function<void()>> tasks_;
    bool running_ = false;
};

}  // namespace tessary
