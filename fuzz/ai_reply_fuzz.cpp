#include <algorithm>
#include <set>

#include "ai/card_job.h"
#include "ai/grade_job.h"
#include "ai/summary_job.h"
#include "base/text.h"
#include "expect.h"
#include "platform/adapters/icu/icu_text_services.h"

namespace tessary {
namespace {

const IcuTextServices kText;

std::vector<GeneratedCard> cardsOf(const std::string& reply, const std::set<FlashcardKind>& kinds) {
    const auto cards = decodeCards(reply, {.kinds = kinds, .count = 5, .language = "", .focus = {}}, kText);
    if (!cards) expect(cards.error().kind == AIError::Kind::badResponse, "a refused reply is a bad response");
    return cards.value_or(std::vector<GeneratedCard>{});
}

void checkCard(const GeneratedCard& card) {
    expect(!contentProblem(card), "a card is valid");
    expect(!trimmed(card.back).empty(), "a card has a back");
    expect(isValidUtf8(card.front) && isValidUtf8(card.back), "a card is UTF-8");
    if (card.kind != FlashcardKind::multipleChoice) return expect(card.options.empty(), "only a choice has options");
    std::set<std::string> folded;
    for (const std::string& option : card.options) {
        expect(!option.empty() && folded.insert(kText.folded(option)).second, "options are distinct");
    }
    expect(card.back == card.options.at(static_cast<std::size_t>(*card.correctIndex)), "the back is the right option");
}

void checkReply(const std::string& reply) {
    const std::vector<GeneratedCard> all =
        cardsOf(reply, {FlashcardKind::basic, FlashcardKind::cloze, FlashcardKind::multipleChoice});
    std::ranges::for_each(all, checkCard);
    for (const FlashcardKind kind : {FlashcardKind::basic, FlashcardKind::cloze, FlashcardKind::multipleChoice}) {
        std::vector<GeneratedCard> ofKind = all;
        std::erase_if(ofKind, [kind](const GeneratedCard& card) { return card.kind != kind; });
        expect(cardsOf(reply, {kind}) == ofKind, "the cards are those of the requested kind");
    }
    if (const AIResult<Summary> summary = decodeSummary(reply)) {
        expect(!summary->text.empty() && isValidUtf8(summaryPageBody(*summary)), "a summary says something");
    }
    if (const AIResult<AnswerGrade> grade = decodeGrade(reply)) {
        expect(grade->score >= 0 && grade->score <= 1, "a score lies in its range");
    }
}

}  // namespace
}  // namespace tessary

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessary::checkReply(std::string(tessary::textOf(data, size)));
    return 0;
}
