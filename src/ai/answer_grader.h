#pragma once

#include <functional>
#include <memory>

#include "ai/ai_provider.h"
#include "ai/ai_settings.h"
#include "ai/job.h"

namespace tessary {

/// Has one typed answer judged at a time, in the background. Nothing is tried twice. Main thread only.
class AnswerGrader {
public:
    using MakeProvider = std::function<AIResult<std::unique_ptr<AIProvider>>(const AISettings&, std::stop_token)>;
    using Done = std::function<void(AIResult<AnswerGrade>)>;

    /// `loop` outlives the grader.
    AnswerGrader(MainLoop& loop, MakeProvider makeProvider) : loop_(loop), makeProvider_(std::move(makeProvider)) {}

    /// Calls `done` on the main thread, unless the grader is gone or another answer was asked about in the meantime.
    void grade(const AISettings& settings, GradeRequest request, Done done);
    /// `done` is called with the error `cancelled`.
    void cancel();

private:
    MainLoop& loop_;
    MakeProvider makeProvider_;
    std::unique_ptr<Job> job_;
};

}  // namespace tessary
