#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text_services.h"

namespace tessary {

/// A word or number of an answer, or an operator that stands alone.
struct AnswerWord {
    std::u32string key;     ///< folded; never empty
    std::size_t begin = 0;  ///< in the text
    std::size_t end = 0;
    bool exact = false;  ///< with digits or operators: there are no small errors in it
    bool isOperator = false;
    bool isKeyWord = false;
    bool separatorAfter = false;  ///< as a comma
    bool startsWithDigit = false;
    bool endsWithDigit = false;
};

/// What a comma or space between digits means. Where it is doubtful, an answer may be right in either reading.
enum class NumberReading { decimalComma, groupedThousands };

/// The code points of a text with one spelling for signs that have several, as in "≤" and "<=".
[[nodiscard]] std::u32string plainAnswer(std::string_view text);

/// The ways of putting a plain expected answer, each of them right: the texts between " / ", and all of it; each with
/// and without what stands in parentheses.
[[nodiscard]] std::vector<std::u32string> acceptedAnswers(std::u32string_view expected, const TextServices& text);

/// The words of a plain answer, and the operators in which two answers may differ: a minus before a number, "C++",
/// "x < 5"; other punctuation is dropped.
[[nodiscard]] std::vector<AnswerWord> answerWords(std::u32string_view plain, NumberReading reading,
                                                  const TextServices& text);

/// All words in one run, so that spacing doesn't count. Only numbers next to each other stay apart.
[[nodiscard]] std::u32string runTogether(std::span<const AnswerWord> words);

/// "a", "an", "the".
[[nodiscard]] bool isArticle(const AnswerWord& word);
/// Ties the parts of an answer together, as "and".
[[nodiscard]] bool isConnector(const AnswerWord& word);
/// Can stand around an answer without changing it.
[[nodiscard]] bool isHarmless(const AnswerWord& word);

/// Whether `typed` is `expected` but for a small typing error: one letter from 4 letters on, two from 8 on; a swap of
/// neighbours counts as one. Long words get none, so that the work stays bounded.
[[nodiscard]] bool isMisspelling(std::u32string_view expected, std::u32string_view typed);

}  // namespace tessary
