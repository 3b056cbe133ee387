#pragma once

#include <functional>
#include <utility>

#include "platform/main_loop.h"

namespace tessary {

/// Brings a burst of changes together into one save, some time after the last of them. Main thread only.
class DelayedSave {
public:
    /// `save` is called from the loop, or from `flush`, while something is pending.
    DelayedSave(MainLoop& loop, double delaySeconds, std::function<void()> save)
        : loop_(loop), delay_(delaySeconds), save_(std::move(save)) {}

    /// A change waits to be written; starts the delay anew.
    void schedule() {
        savePending_ = true;
        saveWork_ = loop_.postAfter(delay_, [this] { flush(); });
    }

    [[nodiscard]] bool isPending() const { return savePending_; }

    /// Saves now what is pending, if anything is.
    void flush() {
        saveWork_.cancel();
        if (std::exchange(savePending_, false)) save_();
    }

private:
    MainLoop& loop_;
    double delay_;
    std::function<void()> save_;
    DelayedTask saveWork_;
    bool savePending_ = false;
};

}  // namespace tessary
