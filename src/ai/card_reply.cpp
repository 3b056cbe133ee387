#include <algorithm>

#include "ai/card_job.h"
#include "ai/reply_json.h"
#include "base/text.h"

namespace tessary {
namespace {

FlashcardKind kindNamed(std::string_view name) {
    std::string letters;
    for (const char c : asciiLowered(name)) {
        if (c >= 'a' && c <= 'z') letters += c;
    }
    const auto has = [&](std::string_view word) { return letters.find(word) != std::string::npos; };
    if (has("multiple") || has("choice") || letters == "mcq") return FlashcardKind::multipleChoice;
    if (has("cloze") || has("blank") || letters == "fill") return FlashcardKind::cloze;
    return FlashcardKind::basic;
}

std::optional<std::string> unlessEmpty(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

/// Turns the options into distinct ones and finds the right one: the one that the answer names, else the index's.
class Choices {
public:
    explicit Choices(const TextServices& text) : text_(text) {}

    void add(const std::string& option, bool isRight) {
        const std::string folded = text_.folded(option);
        const auto same = std::ranges::find(folded_, folded);
        const auto index = static_cast<std::size_t>(same - folded_.begin());
        if (same == folded_.end()) {
            folded_.push_back(folded);
            options_.push_back(option);
        }
        if (isRight) right_ = index;
    }

    /// False when no option is known to be right.
    bool complete(GeneratedCard& card) const {
        const auto named = std::ranges::find(folded_, text_.folded(card.back));
        const std::optional<std::size_t> right =
            named == folded_.end() ? right_ : std::optional(static_cast<std::size_t>(named - folded_.begin()));
        if (!right) return false;
        card.options = options_;
        card.correctIndex = static_cast<std::int64_t>(*right);
        card.back = options_[*right];
        return true;
    }

private:
    const TextServices& text_;
    std::vector<std::string> options_;
    std::vector<std::string> folded_;
    std::optional<std::size_t> right_;
};

/// The options as they stand, empty ones included: the index counts them all.
std::vector<std::string> rawOptions(JsonValue json) {
    std::vector<std::string> options;
    const std::optional<JsonValue> list = json.member("options");
    if (!list || list->kind() != JsonKind::array) return options;
    list->forEachElement([&](JsonValue option) {
        JsonWriter number;
        if (option.kind() == JsonKind::number) writeValue(number, option);
        options.push_back(option.kind() == JsonKind::string ? std::string(trimmed(option.asString()))
                                                            : number.finish().value_or(""));
    });
    return options;
}

bool completeChoice(GeneratedCard& card, JsonValue json, const TextServices& text) {
    Choices choices(text);
    const std::optional<std::int64_t> right = integerIn(json, {"correct_index", "correctIndex"});
    std::int64_t index = 0;
    for (const std::string& option : rawOptions(json)) {
        if (!option.empty()) choices.add(option, right == index);
        ++index;
    }
    return choices.complete(card);
}

std::optional<GeneratedCard> cardFrom(JsonValue json, const TextServices& text) {
    if (json.kind() != JsonKind::object) return std::nullopt;
    GeneratedCard card;
    card.kind = kindNamed(textIn(json, {"kind"}));
    card.front = textIn(json, {"front"});
    card.back = textIn(json, {"back"});
    card.explanation = unlessEmpty(textIn(json, {"explanation"}));
    card.sourcePage = integerIn(json, {"page"});
    if (card.kind == FlashcardKind::cloze) card.back = joined(clozeTerms(card.front), kClozeTermSeparator);
    if (card.kind == FlashcardKind::multipleChoice && !completeChoice(card, json, text)) return std::nullopt;
    if (card.back.empty() || contentProblem(card)) return std::nullopt;
    return card;
}

}  // namespace

AIResult<std::vector<GeneratedCard>> decodeCards(const std::string& reply, const CardRequest& request,
                                                 const TextServices& text) {
    const std::unique_ptr<JsonDocument> document = parseReply(reply);
    if (!document) return std::unexpected(AIError::badResponse("it didn't return valid JSON"));
    const JsonValue root = document->root();
    if (root.kind() != JsonKind::object) return std::unexpected(AIError::badResponse("the cards weren't an object"));
    std::vector<GeneratedCard> cards;
    const std::optional<JsonValue> list = root.member("cards");
    if (!list || list->kind() != JsonKind::array) return cards;
    list->forEachElement([&](JsonValue element) {
        std::optional<GeneratedCard> card = cardFrom(element, text);
        if (card && request.kinds.contains(card->kind)) cards.push_back(*std::move(card));
    });
    return cards;
}

}  // namespace tessary
