#pragma once

#include <map>
#include <string>
#include <string_view>

#include "base/signal.h"

namespace tessary {

/// Asks every store to write what is pending now. Posted before quitting and before an export.
inline constexpr std::string_view kNtoFlushStore = "NtoFlushStore";

/// Named notifications that tie the parts of the program together. Main thread only.
class NotificationCenter {
public:
    Subscription observe(std::string_view name, std::function<void()> observer) {
        return signals_[std::string(name)].connect(std::move(observer));
    }

    void post(std::string_view name) {
        if (const auto found = signals_.find(name); found != signals_.end()) found->second.emit();
    }

private:
    std::map<std::string, Signal<>, std::less<>> signals_;
};

}  // namespace tessary
