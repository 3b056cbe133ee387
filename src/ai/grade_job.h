#pragma once

#include <string>

#include "ai/ai_provider.h"
#include "ai/providers/ai_json_backend.h"

namespace tessary {

[[nodiscard]] JSONJob gradeJob(const GradeRequest& request);

/// A score that is missing is 1, 0.5 or 0 by the verdict; one out of range is brought to its end.
[[nodiscard]] AIResult<AnswerGrade> decodeGrade(const std::string& reply);

/// What a typed answer to this card is asked and compared with: of a cloze the sentence with its blanks, and its terms.
[[nodiscard]] GradeRequest gradeRequestFor(const CardContent& card, std::string answer, std::string language);

}  // namespace tessary
