#include "study/answer_words.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <utility>

#include "base/text.h"

namespace tessary {
namespace {

bool isDash(char32_t c) { return c == U'-' || (c >= 0x2010 && c <= 0x2013) || c == 0x2212; }
bool isApostrophe(char32_t c) { return c == U'\'' || c == 0x2018 || c == 0x2019 || c == 0x02BC; }

/// The digit a raised figure shows.
std::optional<char32_t> raisedDigit(char32_t c) {
    if (c == 0xB9) return U'1';
    if (c == 0xB2 || c == 0xB3) return c - 0xB2 + U'2';
    if (c == 0x2070 || (c >= 0x2074 && c <= 0x2079)) return c - 0x2070 + U'0';
    return std::nullopt;
}

std::string utf8(std::u32string_view points) {
    std::string result;
    for (const char32_t c : points) appendUtf8(result, c);
    return result;
}

bool isOneOf(const AnswerWord& word, std::span<const std::u32string_view> words) {
    return std::ranges::find(words, word.key) != words.end();
}

class WordReader {
public:
    WordReader(std::u32string_view text, NumberReading reading, const TextServices& services)
        : text_(text), reading_(reading), services_(services) {}

    std::vector<AnswerWord> run() {
        while (at_ < text_.size()) {
            const char32_t c = text_[at_];
            if (isSpace(at_)) {
                if (c == U'\n' && !words_.empty()) words_.back().separatorAfter = true;
                ++at_;
            } else if (isWordChar(at_) || isSign(at_) || (c == U'.' && isDigit(at_ + 1) && !isWordChar(at_ - 1))) {
                readWord();
            } else if (const std::size_t length = operatorLength()) {
                add({.key = std::u32string(text_.substr(at_, length)), .exact = true, .isOperator = true}, length);
            } else {
                if (isSeparator() && !words_.empty()) words_.back().separatorAfter = true;
                at_ += isArrow() ? 2 : 1;
            }
        }
        return std::move(words_);
    }

private:
    char32_t charAt(std::size_t i) const { return i < text_.size() ? text_[i] : U'\0'; }
    bool isSpace(std::size_t i) const { return charAt(i) == U' ' || charAt(i) == U'\t' || charAt(i) == U'\n'; }
    bool isDigit(std::size_t i) const { return i < text_.size() && services_.isDigit(text_[i]); }
    bool isLetter(std::size_t i) const { return i < text_.size() && services_.isLetter(text_[i]); }
    /// Spacing vowel signs are no letters to Unicode, but tell words apart.
    bool isVowelSign(std::size_t i) const {
        const char32_t c = charAt(i);
        return c >= 0x0900 && c <= 0x0DFF && c != 0x0964 && c != 0x0965;
    }
    bool isWordChar(std::size_t i) const { return isLetter(i) || isDigit(i) || isVowelSign(i); }
    /// Combining marks and the like.
    bool isInvisible(std::size_t i) const { return charAt(i) >= 0x80 && services_.columns(charAt(i)) == 0; }
    std::size_t nextVisible(std::size_t i) const {
        while (isSpace(i)) ++i;
        return i;
    }
    /// The last character before `i` that is no space; past the end when there is none.
    std::size_t previousVisible(std::size_t i) const {
        while (i > 0 && isSpace(i - 1)) --i;
        return i - 1;
    }

    bool isExponentMark(std::size_t i) const { return charAt(i) == U'e' || charAt(i) == U'E'; }
    bool isArrow() const { return (charAt(at_) == U'-' || charAt(at_) == U'=') && charAt(at_ + 1) == U'>'; }

    /// "-" or "+" of a number, not the hyphen of a compound or a range.
    bool isSign(std::size_t i) const {
        const char32_t c = charAt(i);
        if (c != U'-' && c != U'+') return false;
        const bool exponent = isExponentMark(i - 1) && isDigit(i - 2);
        const std::size_t before = previousVisible(i);
        const bool unary = (!isWordChar(before) && charAt(before) != U')') || exponent;
        if (unary) return isDigit(nextVisible(i + 1));
        return c == U'-' && isDigit(i + 1) && isSpace(i - 1);
    }

    bool isSeparator() const {
        const char32_t c = charAt(at_);
        return c == U',' || c == U';' || c == U'&' || c == 0xB7 || c == 0x2022 || isListPlus();
    }
    /// "salt + water", not "x + y".
    bool isListPlus() const {
        if (charAt(at_) != U'+' || !isSpace(at_ - 1) || !isSpace(at_ + 1) || words_.empty()) return false;
        return !words_.back().exact && words_.back().key.size() > 1;
    }

    /// Of the operator that stands here, 0 when what stands here is punctuation.
    std::size_t operatorLength() const {
        const char32_t c = charAt(at_);
        const std::size_t next = nextVisible(at_ + 1);
        const std::size_t before = previousVisible(at_);
        if (isArrow() || isListPlus()) return 0;
        if (c == U'/') return isDigit(before) && isDigit(next) ? 1 : 0;
        if (c == U'*') {
            const bool even = isSpace(at_ - 1) == isSpace(at_ + 1);
            return even && isWordChar(before) && isWordChar(next) ? 1 : 0;
        }
        if (c >= 0x2200 && c <= 0x22FF) return 1;
        constexpr std::u32string_view kOperators = U"+=<>";
        std::size_t end = at_;
        while (end < text_.size() && kOperators.contains(text_[end]) && (end == at_ || !isSign(end))) ++end;
        return end - at_;
    }

    /// Whether the mark at `i` parts groups of three digits in this reading.
    bool partsThousands(std::size_t i) const {
        constexpr std::u32string_view kMarks = U", '";
        const bool groups = isDigit(i + 1) && isDigit(i + 2) && isDigit(i + 3) && !isWordChar(i + 4);
        if (reading_ != NumberReading::groupedThousands || !groups || !kMarks.contains(charAt(i))) return false;
        std::size_t begin = i;
        while (begin > 0 && isDigit(begin - 1)) --begin;
        return i - begin <= 3;
    }
    /// "1,2,3" is a list.
    bool isListComma(std::size_t i) const {
        const auto otherComma = [&](std::size_t k, std::size_t step) {
            while (isDigit(k)) k += step;
            return charAt(k) == U',' && isDigit(k + step);
        };
        return charAt(i) == U',' && (otherComma(i + 1, 1) || otherComma(i - 1, std::size_t(-1)));
    }

    void readWord() {
        const std::size_t begin = at_;
        std::u32string raw;
        AnswerWord word;
        if (!isWordChar(at_)) {
            raw += text_[at_] == U'.' ? std::u32string_view(U"0.") : text_.substr(at_, 1);
            at_ = nextVisible(at_ + 1);
        }
        word.startsWithDigit = isDigit(at_);
        for (; at_ < text_.size(); ++at_) {
            const bool betweenDigits = isDigit(at_ - 1) && isDigit(at_ + 1);
            const char32_t c = text_[at_];
            if (isWordChar(at_)) {
                raw += c;
                word.exact |= isDigit(at_);
            } else if (isInvisible(at_) || (c == U'\'' && isLetter(at_ + 1))) {
                continue;
            } else if (betweenDigits && partsThousands(at_)) {
                continue;
            } else if (betweenDigits && (c == U'.' || (c == U',' && !isListComma(at_)))) {
                raw += U'.';
            } else if (isExponentMark(at_ - 1) && isSign(at_)) {
                raw += c;
            } else {
                break;
            }
        }
        word.endsWithDigit = isDigit(at_ - 1);
        const std::u32string tail = postfix();
        word.exact |= !tail.empty();
        word.key = codePoints(services_.folded(utf8(raw))) + tail;
        word.isKeyWord = word.exact || isLong(word.key) || std::ranges::any_of(raw.substr(1), isAsciiUpper);
        const std::size_t end = std::exchange(at_, begin);
        add(std::move(word), end - begin);
    }

    /// Operators that belong to the word before them: "C++", "C#", "Na+", "5 %".
    std::u32string postfix() {
        const std::size_t visible = isDigit(at_ - 1) ? nextVisible(at_) : at_;
        if (isDigit(at_ - 1) && (charAt(visible) == U'%' || charAt(visible) == 0x2030)) {
            at_ = visible + 1;
            return std::u32string(text_.substr(visible, 1));
        }
        std::size_t end = at_;
        while (charAt(end) == U'+' || (charAt(end) == U'#' && isLetter(at_ - 1))) ++end;
        if (isWordChar(end)) return {};
        const std::u32string_view tail = text_.substr(at_, end - at_);
        at_ = end;
        return std::u32string(tail);
    }

    static bool isAsciiUpper(char32_t c) { return c >= U'A' && c <= U'Z'; }
    /// Short words of Latin letters carry little: "the", "der", "of".
    static bool isLong(std::u32string_view key) {
        return key.size() > 3 || std::ranges::any_of(key, [](char32_t c) { return c >= 0x300; });
    }

    void add(AnswerWord word, std::size_t length) {
        word.begin = at_;
        word.end = at_ += length;
        if (!word.key.empty()) words_.push_back(std::move(word));
    }

    const std::u32string_view text_;
    const NumberReading reading_;
    const TextServices& services_;
    std::size_t at_ = 0;
    std::vector<AnswerWord> words_;
};
/// The texts between " / " outside of parentheses; but "1 / 2" is a number.
std::vector<std::u32string> alternativesOf(std::u32string_view expected, const TextServices& text) {
    constexpr std::u32string_view kSlash = U" / ";
    const auto isDigit = [&](std::size_t i) { return i < expected.size() && text.isDigit(expected[i]); };
    std::vector<std::u32string> alternatives(1);
    int depth = 0;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        depth += expected[i] == U'(' ? 1 : expected[i] == U')' ? -1 : 0;
        const bool slash = depth == 0 && expected.substr(i).starts_with(kSlash);
        if (slash && !(isDigit(i - 1) && isDigit(i + kSlash.size()))) {
            alternatives.emplace_back();
            i += kSlash.size() - 1;
        } else {
            alternatives.back() += expected[i];
        }
    }
    return alternatives;
}

struct Parentheses {
    std::size_t begin = 0;  ///< of the opening one
    std::size_t end = 0;    ///< past the closing one
    bool tied = false;      ///< to a word, as in "colo(u)r"
};

/// The outermost ones. Those of a formula are not optional, and where one is never closed none are.
std::vector<Parentheses> optionalParts(std::u32string_view text) {
    constexpr std::u32string_view kFormula = U"+-*/=<>^";
    constexpr std::u32string_view kSpace = U" \t\n";
    std::vector<Parentheses> parts;
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == U'(' && depth++ == 0) begin = i;
        if (text[i] != U')') continue;
        if (--depth < 0) return {};
        if (depth > 0) continue;
        const char32_t before = begin > 0 ? text[begin - 1] : U' ';
        const char32_t after = i + 1 < text.size() ? text[i + 1] : U' ';
        const bool formula = kFormula.contains(before) || kFormula.contains(after) ||
                             text.substr(begin, i - begin).find_first_of(U"+*=<>^") != std::u32string_view::npos;
        const bool tied = !kSpace.contains(before) || (!kSpace.contains(after) && begin == 0);
        if (!formula) parts.push_back({begin, i + 1, tied});
    }
    return depth == 0 ? parts : std::vector<Parentheses>{};
}

std::u32string without(std::u32string_view text, const std::vector<Parentheses>& parts) {
    std::u32string result;
    std::size_t from = 0;
    for (const Parentheses& part : parts) {
        result += text.substr(from, part.begin - from);
        from = part.end;
    }
    return result += text.substr(from);
}

}  // namespace

// Not left to folding, which would take the stroke off "≠".
std::u32string plainAnswer(std::string_view text) {
    constexpr std::array<std::pair<char32_t, std::u32string_view>, 14> kSpellings = {{
        {0xD7, U"*"},
        {0x22C5, U"*"},
        {0xF7, U"/"},
        {0x2215, U"/"},
        {0x2044, U"/"},
        {0x2264, U"<="},
        {0x2265, U">="},
        {0x2192, U"->"},
        {0x207A, U"+"},
        {0x207B, U"-"},
        {0xFF08, U"("},
        {0xFF09, U")"},
        {0xA0, U" "},
        {0x202F, U" "},
    }};
    std::u32string result;
    bool raised = false;
    for (const char32_t c : codePoints(text)) {
        const std::optional<char32_t> digit = raisedDigit(c);
        const bool isRaised = digit || c == 0x207A || c == 0x207B;
        if (isRaised && !raised) result += U'^';
        raised = isRaised;
        const auto spelling = std::ranges::find(kSpellings, c, [](const auto& pair) { return pair.first; });
        if (digit) {
            result += *digit;
        } else if (c >= 0x2080 && c <= 0x2089) {
            result += c - 0x2080 + U'0';
        } else if (isDash(c)) {
            result += U'-';
        } else if (spelling != kSpellings.end()) {
            result += spelling->second;
        } else if (c == U'=' && result.ends_with(U'!')) {
            result.back() = 0x2260;
        } else {
            result += isApostrophe(c) ? U'\'' : c;
        }
    }
    return result;
}

std::vector<std::u32string> acceptedAnswers(std::u32string_view expected, const TextServices& text) {
    std::vector<std::u32string> alternatives = alternativesOf(expected, text);
    if (alternatives.size() > 1) alternatives.emplace_back(expected);
    std::vector<std::u32string> accepted;
    for (std::u32string& alternative : alternatives) {
        std::vector<Parentheses> parts = optionalParts(alternative);
        if (!parts.empty()) {
            accepted.push_back(without(alternative, parts));
            std::erase_if(parts, &Parentheses::tied);
            accepted.push_back(without(alternative, parts));
        }
        accepted.push_back(std::move(alternative));
    }
    return accepted;
}

std::vector<AnswerWord> answerWords(std::u32string_view plain, NumberReading reading, const TextServices& text) {
    return WordReader(plain, reading, text).run();
}

std::u32string runTogether(std::span<const AnswerWord> words) {
    std::u32string run;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0 && words[i - 1].endsWithDigit && words[i].startsWithDigit) run += U' ';
        run += words[i].key;
    }
    return run;
}

bool isArticle(const AnswerWord& word) {
    static constexpr std::array<std::u32string_view, 3> kArticles = {U"a", U"an", U"the"};
    return isOneOf(word, kArticles);
}

bool isConnector(const AnswerWord& word) {
    static constexpr std::array<std::u32string_view, 3> kConnectors = {U"and", U"und", U"et"};
    return isOneOf(word, kConnectors);
}

bool isHarmless(const AnswerWord& word) {
    static constexpr std::array<std::u32string_view, 14> kHarmless = {U"it",    U"its",  U"is",   U"are",  U"was",
                                                                      U"were",  U"they", U"this", U"that", U"these",
                                                                      U"those", U"in",   U"at",   U"on"};
    return isOneOf(word, kHarmless) || isConnector(word) || isArticle(word);
}

bool isMisspelling(std::u32string_view expected, std::u32string_view typed) {
    constexpr std::size_t kLongest = 128;
    const std::size_t allowed = expected.size() < 4 ? 0 : expected.size() < 8 ? 1 : 2;
    const std::size_t shorter = std::min(expected.size(), typed.size());
    const std::size_t longer = std::max(expected.size(), typed.size());
    if (longer - shorter > allowed || longer > kLongest) return false;

    // Optimal string alignment, row by row; what lies further off the diagonal than allowed counts as too far.
    const std::size_t tooFar = allowed + 1;
    std::array<std::vector<std::size_t>, 3> rows;
    for (std::vector<std::size_t>& row : rows) row.assign(typed.size() + 1, tooFar);
    std::iota(rows[0].begin(), rows[0].begin() + static_cast<std::ptrdiff_t>(std::min(allowed, typed.size()) + 1),
              std::size_t{0});
    for (std::size_t i = 1; i <= expected.size(); ++i) {
        const std::vector<std::size_t>& above = rows[(i - 1) % 3];
        const std::vector<std::size_t>& twoAbove = rows[(i + 1) % 3];
        std::vector<std::size_t>& row = rows[i % 3];
        const std::size_t first = i > allowed ? i - allowed : 0;
        const std::size_t last = std::min(typed.size(), i + allowed);
        std::size_t least = tooFar;
        if (first > 0) row[first - 1] = tooFar;
        for (std::size_t j = first; j <= last; ++j) {
            std::size_t distance = j == 0 ? i : std::min(row[j - 1], above[j]) + 1;
            if (j > 0) distance = std::min(distance, above[j - 1] + (expected[i - 1] == typed[j - 1] ? 0 : 1));
            const bool swapped = i > 1 && j > 1 && expected[i - 1] == typed[j - 2] && expected[i - 2] == typed[j - 1];
            if (swapped) distance = std::min(distance, twoAbove[j - 2] + 1);
            row[j] = std::min(distance, tooFar);
            least = std::min(least, row[j]);
        }
        if (last < typed.size()) row[last + 1] = tooFar;
        if (least == tooFar) return false;
    }
    return rows[expected.size() % 3][typed.size()] <= allowed;
}

}  // namespace tessary
