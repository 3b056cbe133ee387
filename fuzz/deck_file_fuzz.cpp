#include "study/deck_file.h"

#include <fuzzer/FuzzedDataProvider.h>

#include "base/text.h"
#include "expect.h"

namespace tessary {
namespace {

std::string withLineFeeds(std::string_view text) { return replacedAll(replacedAll(text, "\r\n", "\n"), "\r", "\n"); }

const std::string& rightOption(const CardContent& card) {
    return card.options[static_cast<std::size_t>(*card.correctIndex)];
}

/// Whether `read` is what the file can carry of `written`.
bool isCarried(const CardContent& written, const CardContent& read) {
    if (read.kind != written.kind || read.front != withLineFeeds(written.front)) return false;
    if (read.explanation || read.sourcePage) return false;
    if (written.kind != FlashcardKind::multipleChoice) {
        return read.back == withLineFeeds(written.back) && read.options.empty() && !read.correctIndex;
    }
    if (read.options.size() != written.options.size()) return false;
    for (std::size_t i = 0; i < read.options.size(); ++i) {
        if (read.options[i] != withLineFeeds(written.options[i])) return false;
    }
    // Of equal options the first is as right as the other.
    return rightOption(read) == withLineFeeds(rightOption(written));
}

std::string takeText(FuzzedDataProvider& bytes) { return scrubbedUtf8(bytes.ConsumeRandomLengthString(64)); }

CardContent takeCard(FuzzedDataProvider& bytes) {
    CardContent card;
    card.kind = bytes.PickValueInArray({FlashcardKind::basic, FlashcardKind::cloze, FlashcardKind::multipleChoice});
    card.front = takeText(bytes);
    card.back = takeText(bytes);
    if (bytes.ConsumeBool()) card.explanation = takeText(bytes);
    if (bytes.ConsumeBool()) card.sourcePage = bytes.ConsumeIntegral<std::int64_t>();
    if (card.kind != FlashcardKind::multipleChoice) return card;
    for (auto left = bytes.ConsumeIntegralInRange(0, 12); left > 0; --left) card.options.push_back(takeText(bytes));
    card.correctIndex = bytes.ConsumeIntegralInRange(-1, 12);
    return card;
}

/// A file that comes from anywhere: what it gives is valid, and comes back equal.
void checkForeignFile(std::string_view file) {
    const auto import = parseDeck(file);
    if (!import) return;
    for (const CardContent& card : import->cards) expect(!contentProblem(card), "an imported card is valid");
    const auto again = parseDeck(exportDeck(import->cards));
    expect(again.has_value(), "an exported deck is readable");
    expect(again->problems.empty(), "an exported deck has no bad line");
    expect(again->cards == import->cards, "imported cards come back equal");
}

/// Any valid cards: they come back as far as the file can carry them.
void checkOwnCards(FuzzedDataProvider bytes) {
    std::vector<CardContent> cards;
    while (bytes.remaining_bytes() > 0) {
        CardContent card = takeCard(bytes);
        if (!contentProblem(card)) cards.push_back(std::move(card));
    }
    if (cards.empty()) return;
    const auto again = parseDeck(exportDeck(cards));
    expect(again.has_value() && again->problems.empty(), "every exported card is readable");
    expect(again->cards.size() == cards.size(), "no card is lost");
    for (std::size_t i = 0; i < cards.size(); ++i) expect(isCarried(cards[i], again->cards[i]), "a card comes back");
}

}  // namespace
}  // namespace tessary

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessary::checkForeignFile(tessary::textOf(data, size));
    tessary::checkOwnCards(FuzzedDataProvider(data, size));
    return 0;
}
