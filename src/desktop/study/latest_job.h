#pragma once

#include <utility>

#include "ai/job.h"

namespace tessary {

/// One piece of work at a time, on a thread of its own. Asked for another meanwhile, it cancels the work and does the
/// last that was asked for, without anyone waiting. Main thread only, but for the work itself; see `Job`.
class LatestJob {
public:
    using Work = std::move_only_function<void(std::stop_token, const Job::Post&)>;

    /// `loop` outlives it.
    explicit LatestJob(MainLoop& loop) : loop_(loop) {}

    void start(Work work) {
        if (running_) {
            next_ = std::move(work);
            job_->cancel();
        } else {
            run(std::move(work));
        }
    }

private:
    void run(Work work) {
        running_ = true;
        job_ = std::make_unique<Job>(
            loop_, [this, work = std::move(work)](std::stop_token stop, const Job::Post& post) mutable {
                work(std::move(stop), post);
                post([this] {
                    running_ = false;
                    if (next_) run(std::exchange(next_, nullptr));
                });
            });
    }

    MainLoop& loop_;
    bool running_ = false;
    Work next_;
    std::unique_ptr<Job> job_;
};

}  // namespace tessary
