#pragma once

#include <optional>

#include "ai/job.h"
#include "cli/command_context.h"
#include "cli/interrupts.h"

namespace tessary {

inline constexpr double kInterruptPoll = 0.02;  ///< seconds; a signal does not wake the main loop

/// Runs the main loop until `isOver`; calls `interrupted` once when the user presses Ctrl-C.
template <class IsOver, class Interrupted>
void runLoopUntil(EventLoop& loop, const Interrupts& interrupts, IsOver isOver, Interrupted interrupted) {
    bool told = false;
    while (!isOver()) {
        if (interrupts.raised() && !std::exchange(told, true)) interrupted();
        loop.waitUntilReady(kInterruptPoll);
        loop.runReady();
    }
}

/// Runs `work` on a thread of its own while the main loop goes on; Ctrl-C stops its token. A failure inside comes out.
template <class Work>
auto inBackground(EventLoop& loop, const Interrupts& interrupts, Work work) {
    using Result = decltype(work(std::stop_token()));
    std::optional<Result> result;
    std::exception_ptr failure;
    bool over = false;
    Job job(loop, [&, work = std::move(work)](std::stop_token stop, const Job::Post& post) {
        try {
            result = work(std::move(stop));
        } catch (...) {
            failure = std::current_exception();
        }
        post([&over] { over = true; });
    });
    runLoopUntil(loop, interrupts, [&over] { return over; }, [&job] { job.cancel(); });
    if (failure) std::rethrow_exception(failure);
    return *std::move(result);
}

}  // namespace tessary
