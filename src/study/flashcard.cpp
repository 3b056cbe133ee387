#include "study/flashcard.h"

#include <utility>

#include "base/text.h"

namespace tessary {

namespace {

constexpr std::string_view kOpen = "{{";
constexpr std::string_view kClose = "}}";

struct Blank {
    std::size_t begin;  // of the opening braces
    std::size_t end;    // past the closing braces
};

std::optional<Blank> nextBlank(std::string_view front, std::size_t from) {
    while (true) {
        const auto begin = front.find(kOpen, from);
        if (begin == std::string_view::npos) return std::nullopt;
        const auto close = front.find(kClose, begin + kOpen.size());
        if (close == std::string_view::npos) return std::nullopt;
        if (close > begin + kOpen.size()) return Blank{.begin = begin, .end = close + kClose.size()};
        from = close + kClose.size();
    }
}

std::string_view termOf(std::string_view front, Blank blank) {
    const auto begin = blank.begin + kOpen.size();
    return front.substr(begin, blank.end - kClose.size() - begin);
}

template <typename Replacement>
std::string withBlanksReplaced(std::string_view front, Replacement replacement) {
    std::string result;
    std::size_t from = 0;
    while (const auto blank = nextBlank(front, from)) {
        result += front.substr(from, blank->begin - from);
        result += replacement(termOf(front, *blank));
        from = blank->end;
    }
    result += front.substr(from);
    return result;
}

bool hasRightOption(const CardContent& content) {
    return content.correctIndex && std::cmp_greater_equal(*content.correctIndex, 0) &&
           std::cmp_less(*content.correctIndex, content.options.size());
}

}  // namespace

CardContent contentOf(const Flashcard& card) {
    return CardContent{
        .kind = card.kind,
        .front = card.front,
        .back = card.back,
        .options = card.options,
        .correctIndex = card.correctIndex,
        .explanation = card.explanation,
        .sourcePage = card.sourcePage,
    };
}

void setContent(Flashcard& card, CardContent content) {
    card.kind = content.kind;
    card.front = std::move(content.front);
    card.back = std::move(content.back);
    card.options = std::move(content.options);
    card.correctIndex = content.correctIndex;
    card.explanation = std::move(content.explanation);
    card.sourcePage = content.sourcePage;
}

std::optional<std::string> contentProblem(const CardContent& content) {
    if (trimmed(content.front).empty()) return "The front is empty.";
    if (content.kind == FlashcardKind::cloze && !nextBlank(content.front, 0)) {
        return "A cloze card needs a blank: put double braces around a term.";
    }
    if (content.kind != FlashcardKind::multipleChoice) return std::nullopt;
    if (content.options.size() < 2) return "A multiple choice card needs at least two options.";
    if (!hasRightOption(content)) return "A multiple choice card needs a right option.";
    return std::nullopt;
}

std::vector<std::string> clozeTerms(std::string_view front) {
    std::vector<std::string> terms;
    std::size_t from = 0;
    while (const auto blank = nextBlank(front, from)) {
        terms.emplace_back(termOf(front, *blank));
        from = blank->end;
    }
    return terms;
}

std::string clozeWithBlanks(std::string_view front, std::string_view blank) {
    return withBlanksReplaced(front, [blank](std::string_view) { return blank; });
}

std::string clozeRevealed(std::string_view front) {
    return withBlanksReplaced(front, [](std::string_view term) { return term; });
}

}  // namespace tessary
