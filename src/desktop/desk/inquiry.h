#pragma once

#include <functional>
#include <memory>
#include <stop_token>
#include <utility>

#include "ai/job.h"

namespace tessary {

/// Finds something out on a thread of its own. Of several questions only the last is answered, after those before it
/// have come to their end, so that asking never waits. Main thread only, but for the question itself. A model declares
/// it last: its thread works on what stands above.
template <class Answer>
class Inquiry {
public:
    /// On the inquiry's thread; must not throw, and return soon after its token is stopped.
    using Question = std::move_only_function<Answer(std::stop_token)>;

    /// `loop` outlives the inquiry.
    void ask(MainLoop& loop, Question question, std::move_only_function<void(Answer)> told) {
        next_ = [this, &loop, question = std::move(question), told = std::move(told)]() mutable {
            job_ = std::make_unique<Job>(loop, [this, question = std::move(question), told = std::move(told)](
                                                   std::stop_token stop, const Job::Post& post) mutable {
                post([this, answer = question(stop), told = std::move(told)]() mutable {
                    if (next_) return begin();
                    const std::unique_ptr<Job> ended = std::move(job_);
                    if (!std::exchange(cancelled_, false)) told(std::move(answer));
                });
            });
        };
        cancelled_ = false;
        job_ ? job_->cancel() : begin();
    }

    /// Nobody is told any more.
    void cancel() {
        next_ = nullptr;
        cancelled_ = job_ != nullptr;
        if (job_) job_->cancel();
    }

private:
    void begin() {
        job_.reset();
        std::exchange(next_, nullptr)();
    }

    std::move_only_function<void()> next_;
    std::unique_ptr<Job> job_;
    bool cancelled_ = false;
};

}  // namespace tessary
