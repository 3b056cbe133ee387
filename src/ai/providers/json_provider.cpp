#include "ai/providers/json_provider.h"

#include "ai/card_job.h"
#include "ai/grade_job.h"

namespace tessary {

AIResult<std::vector<GeneratedCard>> JSONProvider::generateCards(std::string_view source, const CardRequest& request,
                                                                 const std::vector<std::string>& existingFronts,
                                                                 std::stop_token stop) {
    const AIResult<std::string> reply = backend_->completeJSON(cardJob(source, request, existingFronts), stop);
    if (!reply) return std::unexpected(reply.error());
    return decodeCards(*reply, request, text_);
}

AIResult<Summary> JSONProvider::summarise(std::string_view source, std::string_view language, std::stop_token stop) {
    const AIResult<std::string> reply = backend_->completeJSON(summaryJob(source, language), stop);
    if (!reply) return std::unexpected(reply.error());
    return decodeSummary(*reply);
}

AIResult<AnswerGrade> JSONProvider::grade(const GradeRequest& request, std::stop_token stop) {
    const AIResult<std::string> reply = backend_->completeJSON(gradeJob(request), stop);
    if (!reply) return std::unexpected(reply.error());
    return decodeGrade(*reply);
}

}  // namespace tessary
