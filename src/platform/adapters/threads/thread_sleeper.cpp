#include "platform/adapters/threads/thread_sleeper.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace tessary {
namespace {

constexpr double kLongestSleep = 1e9;  // seconds; a clock's nanoseconds hold no more than nine times that

}  // namespace

void ThreadSleeper::sleep(double seconds, std::stop_token stop) {
    if (!(seconds > 0)) return;
    const std::chrono::duration<double> wanted(std::min(seconds, kLongestSleep));
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait_for(lock, std::move(stop), std::chrono::ceil<std::chrono::nanoseconds>(wanted), [] { return false; });
}

}  // namespace tessary
