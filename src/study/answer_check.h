#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/json_record.h"
#include "platform/text_services.h"
#include "study/flashcard.h"

namespace tessary {

/// A judged answer, whoever judged it.
struct AnswerGrade {
    enum class Verdict { correct, partial, wrong };

    Verdict verdict = Verdict::wrong;
    double score = 0;                  ///< 0 to 1
    std::string feedback;              ///< one short sentence for the learner
    std::vector<std::string> missing;  ///< what the answer left out

    friend bool operator==(const AnswerGrade&, const AnswerGrade&) = default;
};

/// Compares a typed answer with the card's own, without regard to case, diacritics, punctuation and spacing; but a
/// decimal point, a minus and other operators count. Of the expected answer " / " separates alternatives, commas and
/// "and" separate parts that may come in any order, and what stands in parentheses may be left out.
///
/// "Partial" is an answer with small typing errors (never in numbers), with a part missing, or with words added that
/// may change its meaning. A multiple choice also takes the option's number, from 1; of several blanks one text gives
/// all, with "·", ";" or "," between them. Bounded work for any text. Any thread.
[[nodiscard]] AnswerGrade checkAnswer(const CardContent& card, std::string_view typed, const TextServices& text);

/// Compares each typed term with the term of its own blank; `typed` may be shorter than the card has blanks. The score
/// is the mean of all blanks, and every term that is not right counts as missing. Any thread.
[[nodiscard]] AnswerGrade checkBlanks(const CardContent& card, const std::vector<std::string>& typed,
                                      const TextServices& text);

/// What the learner is likely to rate after an answer that was judged so.
[[nodiscard]] Rating suggestedRating(AnswerGrade::Verdict verdict);

template <>
struct EnumNames<AnswerGrade::Verdict> {
    static constexpr auto names = std::array{
        std::pair{AnswerGrade::Verdict::correct, std::string_view("correct")},
        std::pair{AnswerGrade::Verdict::partial, std::string_view("partial")},
        std::pair{AnswerGrade::Verdict::wrong, std::string_view("wrong")},
    };
};

template <>
struct Record<AnswerGrade> {
    static constexpr auto fields = std::tuple{
        required("verdict", &AnswerGrade::verdict),
        required("score", &AnswerGrade::score),
        withDefault("feedback", &AnswerGrade::feedback),
        withDefault("missing", &AnswerGrade::missing),
    };
};

}  // namespace tessary
