#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <thread>

#include "platform/main_loop.h"

namespace tessary {

/// Work on a thread of its own that reports to the main thread. Main thread only, but for the work itself.
class Job {
public:
    /// Runs a task on the main thread, after those before it; not any more once the job is gone.
    using Post = std::function<void(std::move_only_function<void()>)>;

    /// Starts at once. `work` must not throw, and return soon after its token is stopped. `loop` outlives the job.
    Job(MainLoop& loop, std::move_only_function<void(std::stop_token, const Post&)> work)
        : thread_([&loop, alive = std::weak_ptr(alive_), work = std::move(work)](std::stop_token stop) mutable {
              work(stop, [&loop, alive](std::move_only_function<void()> task) {
                  loop.post([alive, task = std::move(task)]() mutable {
                      if (!alive.expired()) task();
                  });
              });
          }) {}

    /// Cancels the work and waits for its end; what it has posted and has not run yet never will.
    ~Job() = default;
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    void cancel() { thread_.request_stop(); }

private:
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  // before the thread, which takes a look at it
    std::jthread thread_;
};

}  // namespace tessary
