#include "ai/answer_grader.h"

#include <exception>

namespace tessary {
namespace {

AIResult<AnswerGrade> gradeNow(const AnswerGrader::MakeProvider& makeProvider, const AISettings& settings,
                               const GradeRequest& request, const std::stop_token& stop) {
    try {
        AIResult<std::unique_ptr<AIProvider>> provider = makeProvider(settings, stop);
        if (!provider) return std::unexpected(provider.error());
        if (const AIResult<void> ready = (*provider)->prepare(stop); !ready) return std::unexpected(ready.error());
        AIResult<AnswerGrade> grade = (*provider)->grade(request, stop);
        if (stop.stop_requested()) return std::unexpected(AIError::cancelled());
        return grade;
    } catch (const std::exception& failure) {
        return std::unexpected(AIError::badResponse(failure.what()));
    }
}

}  // namespace

void AnswerGrader::grade(const AISettings& settings, GradeRequest request, Done done) {
    job_ = std::make_unique<Job>(loop_, [settings, request = std::move(request), done = std::move(done),
                                         makeProvider = makeProvider_](std::stop_token stop, const Job::Post& post) {
        post([done, result = gradeNow(makeProvider, settings, request, stop)] { done(result); });
    });
}

void AnswerGrader::cancel() {
    if (job_) job_->cancel();
}

}  // namespace tessary
