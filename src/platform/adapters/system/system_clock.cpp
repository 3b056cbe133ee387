#include "platform/adapters/system/system_clock.h"

#include <chrono>

namespace tessary {

Date SystemClock::now() const {
    constexpr auto kReferenceDay = std::chrono::sys_days{std::chrono::year{2001} / 1 / 1};
    return Date{std::chrono::duration<double>(std::chrono::system_clock::now() - kReferenceDay).count()};
}

}  // namespace tessary
