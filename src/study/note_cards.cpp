#include "study/note_cards.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "base/text.h"

namespace tessary {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr char kMasked = '\x01';
constexpr std::string_view kAnswerMark = " :: ";

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n'; }
bool isAsciiDigit(char c) { return c >= '0' && c <= '9'; }
bool isLowercase(char c) { return c >= 'a' && c <= 'z'; }
bool isUppercase(char c) { return c >= 'A' && c <= 'Z'; }

std::size_t runLength(std::string_view text, char c) { return std::min(text.size(), text.find_first_not_of(c)); }

// ---- Markers ----

std::size_t headingMarker(std::string_view line) {
    const auto length = runLength(line, '#');
    return length > 0 && length <= 6 && line.substr(length).starts_with(' ') ? length + 1 : 0;
}

std::size_t listMarker(std::string_view line) {
    for (const std::string_view bullet : {"- ", "* ", "+ "}) {
        if (line.starts_with(bullet)) return bullet.size();
    }
    std::size_t digits = 0;
    while (digits < line.size() && isAsciiDigit(line[digits])) ++digits;
    const auto rest = line.substr(digits);
    return digits > 0 && digits < 10 && (rest.starts_with(". ") || rest.starts_with(") ")) ? digits + 2 : 0;
}

std::size_t taskBox(std::string_view line) {
    for (const std::string_view box : {"[ ] ", "[x] ", "[X] "}) {
        if (line.starts_with(box)) return box.size();
    }
    return 0;
}

struct Line {
    std::string_view text;
    bool startsBlock = false;  // a list item or heading
    bool isHeading = false;
};

Line withoutMarkers(std::string_view raw) {
    Line line{.text = trimmed(raw)};
    while (line.text.starts_with('>')) line.text = trimmed(line.text.substr(1));
    while (const auto length = listMarker(line.text)) {
        line.text = trimmed(line.text.substr(length));
        line.startsBlock = true;
    }
    line.text = trimmed(line.text.substr(taskBox(line.text)));
    if (const auto length = headingMarker(line.text)) {
        line.text = trimmed(line.text.substr(length));
        line.startsBlock = true;
        line.isHeading = true;
    }
    return line;
}

// ---- Code ----

class FenceTracker {
public:
    /// Whether the line is a fence or stands inside one.
    bool isCode(std::string_view line) {
        if (length_ == 0) return open(line);
        const auto run = runLength(line, mark_);
        if (run >= length_ && trimmed(line.substr(run)).empty()) length_ = 0;
        return true;
    }

private:
    bool open(std::string_view line) {
        if (!line.starts_with("```") && !line.starts_with("~~~")) return false;
        const auto run = runLength(line, line.front());
        if (line.front() == '`' && line.substr(run).contains('`')) return false;
        mark_ = line.front();
        length_ = run;
        return true;
    }

    char mark_ = '`';
    std::size_t length_ = 0;
};

/// Where the run of exactly `length` backticks begins.
std::size_t findTicks(std::string_view text, std::size_t from, std::size_t length) {
    while ((from = text.find('`', from)) != kNone) {
        const auto run = runLength(text.substr(from), '`');
        if (run == length) return from;
        from += run;
    }
    return kNone;
}

/// The same length, with inline code blotted out.
std::string withCodeMasked(std::string_view text) {
    std::string masked(text);
    for (auto begin = text.find('`'); begin != kNone; begin = text.find('`', begin)) {
        const auto run = runLength(text.substr(begin), '`');
        const auto close = findTicks(text, begin + run, run);
        if (close == kNone) {
            begin += run;
            continue;
        }
        masked.replace(begin, close + run - begin, close + run - begin, kMasked);
        begin = close + run;
    }
    return masked;
}

// ---- Terms ----

struct Term {
    std::size_t begin;  // with the marks
    std::size_t end;
};

constexpr std::size_t kMarkLength = 2;

bool isTerm(std::string_view term) {
    return !term.empty() && !isSpace(term.front()) && !isSpace(term.back()) && !term.contains("{{") &&
           !term.contains("}}");
}

std::size_t nextMark(std::string_view masked, std::size_t from) {
    return std::min(masked.find("{{", from), masked.find("==", from));
}

/// The end of the term whose marks open at `begin`; kNone when it is none.
std::size_t termEnd(std::string_view masked, std::size_t begin) {
    const auto content = begin + kMarkLength;
    const auto close = masked.find(masked[begin] == '{' ? "}}" : "==", content);
    if (close == kNone || !isTerm(masked.substr(content, close - content))) return kNone;
    return close + kMarkLength;
}

std::vector<Term> termsIn(std::string_view masked) {
    std::vector<Term> terms;
    for (auto begin = nextMark(masked, 0); begin != kNone;) {
        const auto signs = runLength(masked.substr(begin), masked[begin]);
        const auto end = signs == kMarkLength ? termEnd(masked, begin) : kNone;
        if (end != kNone) terms.push_back(Term{.begin = begin, .end = end});
        begin = nextMark(masked, end != kNone ? end : begin + signs);
    }
    return terms;
}

// ---- Sentences ----

std::string_view wordBefore(std::string_view text, std::size_t end) {
    auto begin = end;
    while (begin > 0 && !isSpace(text[begin - 1]) && text[begin - 1] != '(') --begin;
    return text.substr(begin, end - begin);
}

bool isAbbreviation(std::string_view word) {
    constexpr auto kAbbreviations = std::to_array<std::string_view>(
        {"dr", "mr", "mrs", "ms", "prof", "st", "vs", "fig", "no", "cf", "ca", "approx", "bzw", "vgl", "abb", "nr"});
    if (word.contains('.') && !isAsciiDigit(word.front())) return true;
    if (word.size() == 1 && isUppercase(word.front())) return true;
    const auto lowered = asciiLowered(word);
    return std::ranges::find(kAbbreviations, lowered) != kAbbreviations.end();
}

bool endsSentence(std::string_view text, std::size_t position) {
    const char c = text[position];
    if (c != '.' && c != '!' && c != '?') return false;
    const auto next = position + 1;
    if (next == text.size()) return true;
    if (!isSpace(text[next])) return false;
    if (c != '.') return true;
    const auto follower = text.find_first_not_of(" \t\n", next);
    const bool goesOn = follower != kNone && isLowercase(text[follower]);
    return !goesOn && !isAbbreviation(wordBefore(text, position));
}

/// The end of the sentence at `from`; no sentence ends inside a term.
std::size_t sentenceEnd(std::string_view masked, const std::vector<Term>& terms, std::size_t from) {
    for (auto position = from; position < masked.size(); ++position) {
        const auto term = std::ranges::lower_bound(terms, position, {}, &Term::begin);
        if (term != terms.end() && term->begin == position) {
            position = term->end - 1;
        } else if (endsSentence(masked, position)) {
            return position + 1;
        }
    }
    return masked.size();
}

/// The cloze card of the sentence between two positions; without a term its front is empty.
CardContent clozeCard(std::string_view text, const std::vector<Term>& terms, std::size_t begin, std::size_t end) {
    CardContent card;
    card.kind = FlashcardKind::cloze;
    std::vector<std::string> hidden;
    std::string front;
    auto term = std::ranges::lower_bound(terms, begin, {}, &Term::begin);
    for (; term != terms.end() && term->end <= end; ++term) {
        hidden.emplace_back(text.substr(term->begin + kMarkLength, term->end - term->begin - 2 * kMarkLength));
        front += fmt::format("{}{{{{{}}}}}", text.substr(begin, term->begin - begin), hidden.back());
        begin = term->end;
    }
    if (hidden.empty()) return card;
    front += text.substr(begin, end - begin);
    card.front = trimmed(front);
    card.back = joined(hidden, kClozeTermSeparator);
    return card;
}

// ---- The walk over the lines ----

bool hasPrefix(std::string_view line, std::string_view prefix) {
    return equalsIgnoringAsciiCase(line.substr(0, prefix.size()), prefix);
}

class CardFinder {
public:
    void take(std::string_view raw) {
        const auto line = withoutMarkers(raw);
        if (fence_.isCode(line.text) || line.text.empty()) {
            finishBlock();
        } else if (hasPrefix(line.text, "Q:")) {
            finishBlock();
            question_ = trimmed(line.text.substr(2));
        } else if (!question_.empty()) {
            takeInPair(line.text);
        } else if (!takeAnswerLine(line.text)) {
            takeParagraphLine(line);
        }
    }

    std::vector<CardContent> finish() {
        finishBlock();
        return std::move(cards_);
    }

private:
    void takeInPair(std::string_view line) {
        if (!answering_ && hasPrefix(line, "A:")) {
            answering_ = true;
            answer_ = trimmed(line.substr(2));
            return;
        }
        auto& part = answering_ ? answer_ : question_;
        if (!part.empty()) part += '\n';
        part += line;
    }

    bool takeAnswerLine(std::string_view line) {
        const auto mark = withCodeMasked(line).find(kAnswerMark);
        if (mark == kNone) return false;
        finishBlock();
        add(basicCard(trimmed(line.substr(0, mark)), trimmed(line.substr(mark + kAnswerMark.size()))));
        return true;
    }

    void takeParagraphLine(const Line& line) {
        if (line.startsBlock) finishBlock();
        if (!paragraph_.empty()) paragraph_ += ' ';
        paragraph_ += line.text;
        if (line.isHeading) finishBlock();
    }

    void finishBlock() {
        if (answering_) add(basicCard(question_, trimmed(answer_)));
        addClozes();
        question_.clear();
        answer_.clear();
        paragraph_.clear();
        answering_ = false;
    }

    void addClozes() {
        const auto masked = withCodeMasked(paragraph_);
        const auto terms = termsIn(masked);
        if (terms.empty()) return;
        for (std::size_t begin = 0; begin < masked.size();) {
            const auto end = sentenceEnd(masked, terms, begin);
            add(clozeCard(paragraph_, terms, begin, end));
            begin = end;
        }
    }

    static CardContent basicCard(std::string_view front, std::string_view back) {
        CardContent card;
        card.front = front;
        card.back = back;
        return card;
    }

    void add(CardContent card) {
        if (card.front.empty() || card.back.empty()) return;
        if (seen_.insert(questionKey(card)).second) cards_.push_back(std::move(card));
    }

    FenceTracker fence_;
    std::string question_;
    std::string answer_;
    bool answering_ = false;
    std::string paragraph_;
    std::set<std::string> seen_;
    std::vector<CardContent> cards_;
};

}  // namespace

std::vector<CardContent> cardsInText(std::string_view text) {
    CardFinder finder;
    for (const auto line : splitLines(text)) finder.take(line);
    return finder.finish();
}

std::string questionKey(const CardContent& content) {
    const auto hidden = content.kind == FlashcardKind::cloze ? clozeWithBlanks(content.front, "{{}}") : content.front;
    return fmt::format("{}\n{}", enumName(content.kind), trimmed(hidden));
}

}  // namespace tessary
