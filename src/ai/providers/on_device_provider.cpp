#include "ai/providers/on_device_provider.h"

#include "ai/card_job.h"
#include "ai/grade_job.h"
#include "ai/providers/guided_drafts.h"

namespace tessary {
namespace {

AIResult<void> requireAvailable(OnDeviceModel::Availability availability) {
    switch (availability) {
        case OnDeviceModel::Availability::available: return {};
        case OnDeviceModel::Availability::deviceNotEligible:
            return std::unexpected(AIError::unavailable("Apple Intelligence isn't available on this Mac"));
        case OnDeviceModel::Availability::notEnabled:
            return std::unexpected(AIError::unavailable("Turn on Apple Intelligence in System Settings"));
        case OnDeviceModel::Availability::notReady:
            return std::unexpected(AIError::unavailable("Apple Intelligence is still getting ready, try again soon"));
        case OnDeviceModel::Availability::other: break;
    }
    return std::unexpected(AIError::unavailable("Apple Intelligence isn't available"));
}

AIError errorOf(const OnDeviceFailure& failure, std::string_view refusal) {
    switch (failure.kind) {
        case OnDeviceFailure::Kind::cancelled: return AIError::cancelled();
        case OnDeviceFailure::Kind::contextExceeded:
            return AIError::unavailable("there's too much text for the on-device model");
        case OnDeviceFailure::Kind::refused: return AIError::unavailable(std::string(refusal));
        case OnDeviceFailure::Kind::unsupportedLanguage:
            return AIError::unavailable("Apple Intelligence doesn't support this language yet");
        case OnDeviceFailure::Kind::other: break;
    }
    return AIError::badResponse(failure.message);
}

}  // namespace

AIResult<void> OnDeviceProvider::prepare(std::stop_token) {
    AIResult<void> available = requireAvailable(model_.availability());
    if (available) model_.warmUp();
    return available;
}

AIResult<std::string> OnDeviceProvider::respond(std::string_view instructions, std::string_view prompt,
                                                const GuidedShape& shape, std::string_view refusal,
                                                std::stop_token stop) {
    if (AIResult<void> available = requireAvailable(model_.availability()); !available) {
        return std::unexpected(available.error());
    }
    std::expected<std::string, OnDeviceFailure> answer = model_.respond(instructions, prompt, shape, stop);
    if (!answer) return std::unexpected(errorOf(answer.error(), refusal));
    return *std::move(answer);
}

AIResult<std::vector<GeneratedCard>> OnDeviceProvider::generateCards(std::string_view source,
                                                                     const CardRequest& request,
                                                                     const std::vector<std::string>& existingFronts,
                                                                     std::stop_token stop) {
    const JSONJob job = cardJob(source, request, existingFronts);
    const AIResult<std::string> reply = respond(job.system, job.user, cardBatchShape(),
                                                "the on-device model declined to write cards about this text", stop);
    if (!reply) return std::unexpected(reply.error());
    return decodeCards(*reply, request, text_);
}

AIResult<Summary> OnDeviceProvider::summarise(std::string_view source, std::string_view language,
                                              std::stop_token stop) {
    const JSONJob job = summaryJob(text_.prefix(source, kContextCharacters), language);
    const AIResult<std::string> reply =
        respond(job.system, job.user, summaryDraftShape(), "the on-device model declined to summarise this text", stop);
    if (!reply) return std::unexpected(reply.error());
    return decodeSummary(*reply);
}

AIResult<AnswerGrade> OnDeviceProvider::grade(const GradeRequest& request, std::stop_token stop) {
    const JSONJob job = gradeJob(request);
    const AIResult<std::string> reply =
        respond(job.system, text_.prefix(job.user, kContextCharacters), gradeDraftShape(),
                "the on-device model declined to grade this answer", stop);
    if (!reply) return std::unexpected(reply.error());
    return decodeGrade(*reply);
}

}  // namespace tessary
