#include <gtest/gtest.h>

#include <latch>
#include <limits>
#include <stop_token>
#include <thread>

#include "platform/adapters/threads/thread_sleeper.h"

namespace tessary {
namespace {

constexpr double kTooLong = 24 * 60 * 60;

TEST(ThreadSleeper, ReturnsWhenTheTimeIsOver) {
    ThreadSleeper sleeper;
    for (const double seconds : {0.01, 0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) sleeper.sleep(seconds, {});
}

TEST(ThreadSleeper, DoesNotBeginWhenStopped) {
    ThreadSleeper sleeper;
    std::stop_source stop;
    stop.request_stop();
    sleeper.sleep(kTooLong, stop.get_token());
}

TEST(ThreadSleeper, SleepsUntilStopped) {
    for (const double seconds : {kTooLong, 1e300, std::numeric_limits<double>::infinity()}) {
        ThreadSleeper sleeper;
        std::stop_source stop;
        std::latch started(1);
        bool stoppedFirst = false;
        std::jthread thread([&] {
            started.count_down();
            sleeper.sleep(seconds, stop.get_token());
            stoppedFirst = stop.stop_requested();
        });
        started.wait();
        sleeper.sleep(0.02, {});
        stop.request_stop();
        thread.join();
        EXPECT_TRUE(stoppedFirst);
    }
}

}  // namespace
}  // namespace tessary
