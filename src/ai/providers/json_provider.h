#pragma once

#include <memory>

#include "ai/ai_provider.h"
#include "platform/text_services.h"

namespace tessary {

/// The operations of a provider over a backend that answers in JSON.
class JSONProvider final : public AIProvider {
public:
    /// `text` outlives the provider.
    JSONProvider(std::unique_ptr<AIJSONBackend> backend, const TextServices& text)
        : backend_(std::move(backend)), text_(text) {}

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return backend_->maxChunkCharacters(); }
    [[nodiscard]] AIResult<void> prepare(std::stop_token stop) override { return backend_->prepare(stop); }
    [[nodiscard]] AIResult<std::vector<GeneratedCard>> generateCards(std::string_view source,
                                                                     const CardRequest& request,
                                                                     const std::vector<std::string>& existingFronts,
                                                                     std::stop_token stop) override;
    [[nodiscard]] AIResult<Summary> summarise(std::string_view source, std::string_view language,
                                              std::stop_token stop) override;
    [[nodiscard]] AIResult<AnswerGrade> grade(const GradeRequest& request, std::stop_token stop) override;

private:
    std::unique_ptr<AIJSONBackend> backend_;
    const TextServices& text_;
};

}  // namespace tessary
