#include "study/answer_check.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <span>
#include <utility>

#include "base/text.h"
#include "study/answer_words.h"

namespace tessary {
namespace {

using Verdict = AnswerGrade::Verdict;
using Words = std::vector<AnswerWord>;

constexpr std::string_view kCorrect = "Matches the expected answer.";
constexpr std::string_view kPartial = "Close, but part of the answer is missing.";
constexpr std::string_view kWrong = "That doesn't match the expected answer.";
constexpr std::string_view kBlanksCorrect = "Every blank is right.";
constexpr std::string_view kBlanksWrong = "None of the blanks match.";

// What is beyond these is not looked at one by one: the work stays bounded whatever is pasted.
constexpr std::size_t kMostWords = 300;
constexpr std::size_t kMostAnswers = 500;  ///< alternatives, with and without their optional parts
constexpr double kMisspeltWeight = 0.9;    ///< of a misspelt word, against a right one
constexpr double kLeastShare = 0.25;       ///< of the key words, for "partial"

AnswerGrade graded(double score, Verdict verdict, std::vector<std::string> missing = {}) {
    const std::string_view feedback = verdict == Verdict::correct   ? kCorrect
                                      : verdict == Verdict::partial ? kPartial
                                                                    : kWrong;
    return {.verdict = verdict, .score = score, .feedback = std::string(feedback), .missing = std::move(missing)};
}

AnswerGrade correct() { return graded(1, Verdict::correct); }
AnswerGrade wrong(double score = 0) { return graded(score, Verdict::wrong); }
/// `share` of the answer is there.
AnswerGrade partial(double share, std::vector<std::string> missing = {}) {
    return graded(0.4 + 0.3 * share, Verdict::partial, std::move(missing));
}

// ---- Word by word ----

/// Compares what was typed with one way of putting the expected answer.
class WordMatch {
public:
    /// The words of both without articles; at most `kMostWords` of each.
    WordMatch(std::u32string_view expectedText, const Words& expected, const Words& typed)
        : text_(expectedText), expected_(expected), typed_(typed), found_(expected.size()), used_(typed.size()) {
        std::size_t begin = 0;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const bool connects = isConnector(expected[i]);
            if (connects || expected[i].separatorAfter) closePart(std::exchange(begin, i + 1), connects ? i : i + 1);
        }
        closePart(begin, expected.size());
    }

    AnswerGrade grade() {
        findWholeParts();
        findWords([](const AnswerWord& a, const AnswerWord& b) { return a.key == b.key; }, 1);
        findWords([](const AnswerWord& a,
                     const AnswerWord& b) { return !a.exact && !b.exact && isMisspelling(a.key, b.key); },
                  kMisspeltWeight);
        for (Part& part : parts_) {
            if (part.whole || (!contradicts(part) && !isCalculation(part))) continue;
            std::fill(found_.begin() + part.begin, found_.begin() + part.end, 0.0);
        }
        const bool allWhole = std::ranges::all_of(parts_, &Part::whole);
        if (allWhole && !parts_.empty() && surplus() == 0) return correct();
        const double share = matchedShare();
        const bool isClose = share >= kLeastShare || std::ranges::any_of(parts_, &Part::whole);
        if (!isClose) return wrong(0.2 * share);
        const auto length = static_cast<double>(expected_.size());
        return partial(share * length / (length + static_cast<double>(surplus())), missing());
    }

private:
    struct Part {
        std::ptrdiff_t begin = 0;  // into the expected words
        std::ptrdiff_t end = 0;
        bool whole = false;  // its words stand together in what was typed
        std::ptrdiff_t length() const { return end - begin; }
    };

    void closePart(std::size_t begin, std::size_t end) {
        if (begin < end) parts_.push_back({static_cast<std::ptrdiff_t>(begin), static_cast<std::ptrdiff_t>(end)});
    }

    /// Longer parts first, so that "cell" doesn't take a word of "cell wall".
    void findWholeParts() {
        std::vector<Part*> order;
        for (Part& part : parts_) order.push_back(&part);
        std::ranges::stable_sort(order, std::ranges::greater{}, [](const Part* part) { return part->length(); });
        for (Part* part : order) {
            const std::u32string key = runTogether({expected_.begin() + part->begin, expected_.begin() + part->end});
            for (std::size_t from = 0; from < typed_.size() && !part->whole; ++from) {
                const std::size_t count = used_[from] ? 0 : wordsThatSpell(key, from);
                std::fill_n(used_.begin() + static_cast<std::ptrdiff_t>(from), count, true);
                part->whole = count > 0;
            }
            if (part->whole) std::fill(found_.begin() + part->begin, found_.begin() + part->end, 1.0);
        }
    }

    /// How many of the typed words from `from` on give `key`; 0 when they don't.
    std::size_t wordsThatSpell(std::u32string_view key, std::size_t from) const {
        if (!key.starts_with(typed_[from].key)) return 0;
        std::size_t length = 0;
        for (std::size_t i = from; i < typed_.size() && !used_[i] && length <= key.size(); ++i) {
            const std::u32string run = runTogether(std::span(typed_).subspan(from, i + 1 - from));
            if (!key.starts_with(run)) return 0;
            length = run.size();
            if (length == key.size()) return i + 1 - from;
        }
        return 0;
    }

    template <class Same>
    void findWords(Same same, double weight) {
        for (std::size_t i = 0; i < expected_.size(); ++i) {
            for (std::size_t k = 0; k < typed_.size() && found_[i] == 0; ++k) {
                if (used_[k] || !same(expected_[i], typed_[k])) continue;
                found_[i] = weight;
                used_[k] = true;
            }
        }
    }

    /// Another number, or another operator, in the place of the right one.
    bool contradicts(const Part& part) const {
        for (std::ptrdiff_t i = part.begin; i < part.end; ++i) {
            const AnswerWord& word = expected_[static_cast<std::size_t>(i)];
            if (!word.exact || found_[static_cast<std::size_t>(i)] > 0) continue;
            for (std::size_t k = 0; k < typed_.size(); ++k) {
                if (!used_[k] && typed_[k].exact && typed_[k].isOperator == word.isOperator) return true;
            }
        }
        return false;
    }

    /// Numbers and operators only, as in "1/2": half of it is no part of an answer.
    bool isCalculation(const Part& part) const {
        const std::span words(expected_.begin() + part.begin, expected_.begin() + part.end);
        return std::ranges::all_of(words, &AnswerWord::exact) && std::ranges::any_of(words, &AnswerWord::isOperator);
    }

    /// Typed words that belong to nothing expected, as "not", and may change the meaning.
    std::size_t surplus() const {
        std::size_t count = 0;
        for (std::size_t k = 0; k < typed_.size(); ++k) count += !used_[k] && !isHarmless(typed_[k]) ? 1 : 0;
        return count;
    }

    /// Of the key words; of all when there are none. Operators alone don't count.
    double matchedShare() const {
        double all[2] = {};
        double matched[2] = {};
        for (const Part& part : parts_) {
            for (auto i = static_cast<std::size_t>(part.begin); i < static_cast<std::size_t>(part.end); ++i) {
                const std::size_t kind = expected_[i].isKeyWord ? 1 : 0;
                if (expected_[i].isOperator) continue;
                all[kind] += 1;
                matched[kind] += found_[i];
            }
        }
        const std::size_t kind = all[1] > 0 ? 1 : 0;
        return all[kind] > 0 ? matched[kind] / all[kind] : 0;
    }

    /// What was not found, words that stand together as one text.
    std::vector<std::string> missing() const {
        std::vector<std::string> texts;
        for (const Part& part : parts_) {
            for (auto i = static_cast<std::size_t>(part.begin); i < static_cast<std::size_t>(part.end); ++i) {
                if (found_[i] > 0) continue;
                const std::size_t first = i;
                while (i + 1 < static_cast<std::size_t>(part.end) && found_[i + 1] == 0) ++i;
                std::string text;
                for (std::size_t k = expected_[first].begin; k < expected_[i].end; ++k) appendUtf8(text, text_[k]);
                texts.push_back(std::move(text));
            }
        }
        return texts;
    }

    const std::u32string_view text_;
    const Words& expected_;
    const Words& typed_;
    std::vector<Part> parts_;
    std::vector<double> found_;  // weight of each expected word
    std::vector<bool> used_;
};

/// Without articles before a word; where an article is all there is, as in "a, b", it stays.
Words withoutArticles(const Words& words) {
    Words kept;
    for (std::size_t i = 0; i < words.size() && kept.size() < kMostWords; ++i) {
        const bool leads = isArticle(words[i]) && !words[i].separatorAfter && i + 1 < words.size();
        if (!leads || words[i + 1].isOperator) kept.push_back(words[i]);
    }
    return kept;
}

bool hasNoLetters(const Words& words) { return std::ranges::all_of(words, &AnswerWord::isOperator); }

bool isPlainWords(const Words& words) { return std::ranges::none_of(words, &AnswerWord::exact); }

std::string_view trimmedUtf8(std::u32string_view points, std::string& buffer) {
    buffer.clear();
    for (const char32_t c : points) appendUtf8(buffer, c);
    return trimmed(buffer);
}

AnswerGrade compareOne(const std::u32string& accepted, const std::u32string& typedText, NumberReading reading,
                       const Words& typed, const TextServices& text) {
    const Words expected = answerWords(accepted, reading, text);
    if (hasNoLetters(expected)) {
        std::string a;
        std::string b;
        const std::string_view sought = trimmedUtf8(accepted, a);
        return !sought.empty() && sought == trimmedUtf8(typedText, b) ? correct() : wrong();
    }
    const std::u32string expectedRun = runTogether(expected);
    const std::u32string typedRun = runTogether(typed);
    if (expectedRun == typedRun) return correct();
    const Words expectedWords = withoutArticles(expected);
    const Words typedWords = withoutArticles(typed);
    AnswerGrade grade = WordMatch(accepted, expectedWords, typedWords).grade();
    const bool allSeen = expectedWords.size() < kMostWords && typedWords.size() < kMostWords;
    if (grade.verdict == Verdict::correct && !allSeen) return partial(1);
    const bool misspelt = isPlainWords(expected) && isPlainWords(typed) && isMisspelling(expectedRun, typedRun);
    return misspelt && grade.verdict != Verdict::correct && grade.score < partial(kMisspeltWeight).score
               ? partial(kMisspeltWeight)
               : grade;
}

AnswerGrade compareText(std::string_view expected, std::string_view typed, const TextServices& text) {
    if (trimmed(typed).empty()) return wrong();
    const std::u32string typedText = plainAnswer(typed);
    std::vector<std::u32string> accepted = acceptedAnswers(plainAnswer(expected), text);
    accepted.resize(std::min(accepted.size(), kMostAnswers));
    AnswerGrade best = wrong();
    for (const NumberReading reading : {NumberReading::decimalComma, NumberReading::groupedThousands}) {
        const Words typedWords = answerWords(typedText, reading, text);
        for (const std::u32string& answer : accepted) {
            AnswerGrade grade = compareOne(answer, typedText, reading, typedWords, text);
            if (grade.verdict == Verdict::correct) return grade;
            if (grade.score > best.score) best = std::move(grade);
        }
    }
    return best;
}

// ---- Multiple choice ----

/// "2", "2." or "2)": an index into the options.
std::optional<std::size_t> optionNumber(std::string_view typed, std::size_t options) {
    std::string_view digits = trimmed(typed);
    if (digits.ends_with('.') || digits.ends_with(')')) digits.remove_suffix(1);
    if (digits.empty() || digits.size() > 6) return std::nullopt;
    std::size_t number = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + static_cast<std::size_t>(c - '0');
    }
    return number >= 1 && number <= options ? std::optional(number - 1) : std::nullopt;
}

/// Options may differ in what is forgiven elsewhere, and an answer that is as close to a wrong option is wrong.
AnswerGrade checkChoice(const std::vector<std::string>& options, std::size_t right, std::string_view typed,
                        const TextServices& text) {
    const auto run = [&](std::string_view option) {
        const Words words = answerWords(plainAnswer(option), NumberReading::decimalComma, text);
        return hasNoLetters(words) ? std::u32string() : runTogether(words);
    };
    const std::u32string typedRun = run(typed);
    const auto isSame = [&](const std::string& option) { return trimmed(option) == trimmed(typed); };
    const auto isSameRun = [&](const std::string& option) { return !typedRun.empty() && run(option) == typedRun; };
    if (std::ranges::any_of(options, isSame)) return isSame(options[right]) ? correct() : wrong();
    const auto sameRuns = std::ranges::count_if(options, isSameRun);
    if (sameRuns > 0) return sameRuns == 1 && isSameRun(options[right]) ? correct() : wrong();
    if (const auto number = optionNumber(typed, options.size())) return *number == right ? correct() : wrong();
    AnswerGrade grade = compareText(options[right], typed, text);
    for (std::size_t i = 0; i < options.size() && grade.verdict != Verdict::wrong; ++i) {
        if (i != right && compareText(options[i], typed, text).score >= grade.score) return wrong();
    }
    return grade;
}

// ---- Cloze ----

/// One text for several blanks, taken apart at the first kind of separator in it. A comma within a number is none.
std::vector<std::string> typedBlanks(std::string_view typed) {
    constexpr std::string_view kDot = "·";
    const bool hasDot = typed.find(kDot) != std::string_view::npos;
    const std::string text = hasDot ? replacedAll(typed, kDot, ";") : std::string(typed);
    const char separator = text.find(';') != std::string::npos ? ';' : ',';
    const auto isDigit = [&](std::size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
    std::vector<std::string> pieces(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == separator && !(separator == ',' && isDigit(i - 1) && isDigit(i + 1))) {
            pieces.emplace_back();
        } else {
            pieces.back() += text[i];
        }
    }
    return pieces;
}

}  // namespace

AnswerGrade checkBlanks(const CardContent& card, const std::vector<std::string>& typed, const TextServices& text) {
    const std::vector<std::string> terms = clozeTerms(card.front);
    if (terms.empty()) return compareText(card.back, typed.empty() ? std::string() : typed.front(), text);
    AnswerGrade result = wrong();
    bool anyRight = false;
    for (std::size_t i = 0; i < terms.size(); ++i) {
        const AnswerGrade grade = i < typed.size() ? compareText(terms[i], typed[i], text) : wrong();
        result.score += grade.score / static_cast<double>(terms.size());
        anyRight |= grade.verdict != Verdict::wrong;
        if (grade.verdict != Verdict::correct) result.missing.push_back(terms[i]);
    }
    if (result.missing.empty()) {
        result.verdict = Verdict::correct;
        result.score = 1;
    } else if (anyRight) {
        result.verdict = Verdict::partial;
    }
    result.feedback = result.missing.empty() ? kBlanksCorrect : anyRight ? kPartial : kBlanksWrong;
    return result;
}

AnswerGrade checkAnswer(const CardContent& card, std::string_view typed, const TextServices& text) {
    if (card.kind == FlashcardKind::cloze) {
        const bool hasOneBlank = clozeTerms(card.front).size() <= 1;
        return checkBlanks(card, hasOneBlank ? std::vector{std::string(typed)} : typedBlanks(typed), text);
    }
    const bool hasRightOption = card.correctIndex && std::cmp_greater_equal(*card.correctIndex, 0) &&
                                std::cmp_less(*card.correctIndex, card.options.size());
    if (card.kind != FlashcardKind::multipleChoice || !hasRightOption) return compareText(card.back, typed, text);
    if (trimmed(typed).empty()) return wrong();
    return checkChoice(card.options, static_cast<std::size_t>(*card.correctIndex), typed, text);
}

Rating suggestedRating(AnswerGrade::Verdict verdict) {
    switch (verdict) {
        case AnswerGrade::Verdict::correct: return Rating::good;
        case AnswerGrade::Verdict::partial: return Rating::hard;
        case AnswerGrade::Verdict::wrong: break;
    }
    return Rating::again;
}

}  // namespace tessary
