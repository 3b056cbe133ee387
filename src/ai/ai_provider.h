#pragma once

#include <cstddef>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "ai/ai_error.h"
#include "ai/card_request.h"
#include "ai/summary_job.h"
#include "study/answer_check.h"

namespace tessary {

/// A card, the right answer, and what the student typed.
struct GradeRequest {
    std::string question;
    std::string expected;
    std::string answer;
    std::string language;  ///< of the feedback, by its English name; empty for the language of the source
};

/// One provider, made for one run: it holds a model's name, an address and a key, and keeps nothing between runs.
/// Calls block and return within 50 ms when stopped. Any thread but the main one, one call at a time.
class AIProvider {
public:
    virtual ~AIProvider() = default;

    /// User-perceived characters of source text that one request may carry.
    [[nodiscard]] virtual std::size_t maxChunkCharacters() const = 0;
    /// Looks whether a run can begin at all, and gets ready for it.
    [[nodiscard]] virtual AIResult<void> prepare(std::stop_token stop) = 0;
    /// Cards of the requested kinds; there may be more than asked for, and their pages are as the provider says.
    [[nodiscard]] virtual AIResult<std::vector<GeneratedCard>> generateCards(
        std::string_view source, const CardRequest& request, const std::vector<std::string>& existingFronts,
        std::stop_token stop) = 0;
    [[nodiscard]] virtual AIResult<Summary> summarise(std::string_view source, std::string_view language,
                                                      std::stop_token stop) = 0;
    [[nodiscard]] virtual AIResult<AnswerGrade> grade(const GradeRequest& request, std::stop_token stop) = 0;
};

}  // namespace tessary
