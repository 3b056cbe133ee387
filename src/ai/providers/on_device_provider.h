#pragma once

#include "ai/ai_provider.h"
#include "platform/on_device_model.h"
#include "platform/text_services.h"

namespace tessary {

/// The system's own model. Its context is small: what goes to it is cut to its first `kContextCharacters`.
class OnDeviceProvider final : public AIProvider {
public:
    static constexpr std::size_t kContextCharacters = 4500;

    /// Both outlive the provider.
    OnDeviceProvider(OnDeviceModel& model, const TextServices& text) : model_(model), text_(text) {}

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return kContextCharacters; }
    /// Loads the model when it can be used.
    [[nodiscard]] AIResult<void> prepare(std::stop_token stop) override;
    [[nodiscard]] AIResult<std::vector<GeneratedCard>> generateCards(std::string_view source,
                                                                     const CardRequest& request,
                                                                     const std::vector<std::string>& existingFronts,
                                                                     std::stop_token stop) override;
    [[nodiscard]] AIResult<Summary> summarise(std::string_view source, std::string_view language,
                                              std::stop_token stop) override;
    [[nodiscard]] AIResult<AnswerGrade> grade(const GradeRequest& request, std::stop_token stop) override;

private:
    /// `refusal` is the sentence for an answer that the model's guardrails forbid.
    [[nodiscard]] AIResult<std::string> respond(std::string_view instructions, std::string_view prompt,
                                                const GuidedShape& shape, std::string_view refusal,
                                                std::stop_token stop);

    OnDeviceModel& model_;
    const TextServices& text_;
};

}  // namespace tessary
