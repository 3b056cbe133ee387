#include "study/deck_card_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "study/deck_choices.h"
#include "study/deck_markup.h"

namespace tessary {

namespace {

constexpr auto kNone = std::string_view::npos;

std::optional<FlashcardKind> kindNamed(std::string_view wanted) {
    for (const auto& [value, name] : EnumNames<FlashcardKind>::names) {
        if (equalsIgnoringAsciiCase(name, wanted)) return value;
    }
    return std::nullopt;
}

struct NumberedBlank {
    std::size_t begin;
    std::size_t end;
    std::string_view term;
};

/// Past the "{{c12::" at `begin`; nothing when something else stands there.
std::optional<std::size_t> numberedTermBegin(std::string_view text, std::size_t begin) {
    const auto number = begin + 3;
    const auto end = std::min(text.size(), text.find_first_not_of("0123456789", number));
    if (end == number || !text.substr(end).starts_with("::")) return std::nullopt;
    return end + 2;
}

std::optional<NumberedBlank> nextNumberedBlank(std::string_view text, std::size_t from) {
    for (auto begin = text.find("{{c", from); begin != kNone; begin = text.find("{{c", begin + 1)) {
        const auto termBegin = numberedTermBegin(text, begin);
        if (!termBegin) continue;
        const auto end = text.find("}}", *termBegin);
        if (end == kNone) return std::nullopt;
        const auto content = text.substr(*termBegin, end - *termBegin);
        return NumberedBlank{.begin = begin, .end = end + 2, .term = content.substr(0, content.find("::"))};
    }
    return std::nullopt;
}

std::string withPlainBlanks(std::string_view text) {
    std::string result;
    std::size_t from = 0;
    while (const auto blank = nextNumberedBlank(text, from)) {
        result += text.substr(from, blank->begin - from);
        result += fmt::format("{{{{{}}}}}", blank->term);
        from = blank->end;
    }
    result += text.substr(from);
    return result;
}

class CardReader {
public:
    CardReader(const DeckLayout& layout, const std::vector<std::string>& fields) : layout_(layout), fields_(fields) {}

    std::expected<CardContent, std::string> card() const {
        if (layout_.back >= fields_.size()) return std::unexpected("There is no second field.");
        const auto name = trimmed(kindName());
        const auto kind = kindNamed(name);
        if (!name.empty() && !kind) return std::unexpected(fmt::format("“{}” is no kind of card.", name));
        auto content = kind ? cardOfKind(*kind) : cardOfUnnamedKind();
        if (auto problem = contentProblem(content)) return std::unexpected(std::move(*problem));
        return content;
    }

private:
    [[nodiscard]] std::string_view field(std::size_t index) const {
        return index < fields_.size() ? std::string_view(fields_[index]) : std::string_view();
    }

    [[nodiscard]] std::string_view kindName() const { return layout_.kind ? field(*layout_.kind) : std::string_view(); }

    /// With "\n" as line break; entities stay.
    [[nodiscard]] std::string textOf(std::size_t index) const {
        auto plain = withPlainLineBreaks(field(index));
        return layout_.html ? withoutTags(plain) : plain;
    }

    [[nodiscard]] std::string decoded(std::string text) const { return layout_.html ? decodedEntities(text) : text; }

    [[nodiscard]] CardContent cardOfKind(FlashcardKind kind) const {
        CardContent content;
        content.kind = kind;
        content.back = decoded(textOf(layout_.back));
        auto front = textOf(layout_.front);
        if (kind == FlashcardKind::multipleChoice) {
            setChoices(content, front);
        } else {
            content.front = decoded(std::move(front));
        }
        return content;
    }

    [[nodiscard]] CardContent cardOfUnnamedKind() const {
        auto content = cardOfKind(FlashcardKind::basic);
        if (!nextNumberedBlank(content.front, 0)) return content;
        content.kind = FlashcardKind::cloze;
        content.front = withPlainBlanks(content.front);
        if (trimmed(content.back).empty()) content.back = joined(clozeTerms(content.front), kClozeTermSeparator);
        return content;
    }

    void setChoices(CardContent& content, std::string_view front) const {
        auto choices = splitChoices(front);
        content.front = decoded(std::move(choices.question));
        for (auto& option : choices.options) content.options.push_back(decoded(std::move(option)));
        if (const auto right = optionEqualTo(content.options, content.back)) {
            content.correctIndex = static_cast<std::int64_t>(*right);
        }
    }

    const DeckLayout& layout_;
    const std::vector<std::string>& fields_;
};

}  // namespace

std::expected<CardContent, std::string> cardOfRecord(const std::vector<std::string>& fields, const DeckLayout& layout) {
    return CardReader(layout, fields).card();
}

}  // namespace tessary
