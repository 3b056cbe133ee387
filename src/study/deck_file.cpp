#include "study/deck_file.h"

#include <fmt/format.h>

#include <utility>

#include "base/text.h"
#include "study/deck_card_reader.h"
#include "study/deck_choices.h"
#include "study/deck_layout.h"
#include "study/deck_markup.h"
#include "study/deck_record_reader.h"

namespace tessary {

namespace {

constexpr std::string_view kHeader = "#separator:tab\n#html:true\n#columns:Front\tBack\tKind\n";
constexpr std::string_view kBreakTag = "<br>";

std::string_view escapeAt(std::string_view text) {
    if (text.front() == '\t') return "&#9;";
    if (text.front() == '\n') return kBreakTag;
    if (leadingEntity(text)) return "&amp;";
    if (beginsTag(text)) return "&lt;";
    return {};
}

std::string escaped(std::string_view text) {
    const auto plain = withPlainLineBreaks(text);
    std::string result;
    for (std::string_view rest = plain; !rest.empty(); rest.remove_prefix(1)) {
        const auto escape = escapeAt(rest);
        if (escape.empty()) {
            result += rest.front();
        } else {
            result += escape;
        }
    }
    return result;
}

std::string escapedUnnumbered(std::string_view text) {
    const auto plain = withPlainLineBreaks(text);
    std::string result;
    for (const auto line : split(plain, '\n')) {
        if (line.data() != plain.data()) result += kBreakTag;
        const auto numbering = numberingLength(line);
        if (numbering > 0) {
            result += line.substr(0, numbering - 2);
            result += "&#46;";
        }
        result += escaped(numbering > 0 ? line.substr(numbering - 1) : line);
    }
    return result;
}

std::string withLeadingEscaped(std::string field, char leading, std::string_view escape) {
    if (field.starts_with(leading)) field.replace(0, 1, escape);
    return field;
}

std::string frontField(const CardContent& card) {
    if (card.kind != FlashcardKind::multipleChoice) return escaped(card.front);
    auto field = escapedUnnumbered(card.front) + "<br>";
    for (std::size_t i = 0; i < card.options.size(); ++i) {
        field += fmt::format("<br>{}. {}", i + 1, escapedUnnumbered(card.options[i]));
    }
    return field;
}

/// The back of a multiple choice is what tells its right option in the file. A back that would lead to another one, or
/// to none, gives way to the right option's text.
std::string_view backOf(const CardContent& card) {
    if (card.kind != FlashcardKind::multipleChoice || contentProblem(card)) return card.back;
    const auto& right = card.options[static_cast<std::size_t>(*card.correctIndex)];
    const auto found = optionEqualTo(card.options, card.back);
    return found && card.options[*found] == right ? card.back : right;
}

std::string exportedLine(const CardContent& card) {
    auto front = withLeadingEscaped(frontField(card), '"', "&quot;");
    front = withLeadingEscaped(std::move(front), '#', "&#35;");
    const auto back = withLeadingEscaped(escaped(backOf(card)), '"', "&quot;");
    return fmt::format("{}\t{}\t{}\n", front, back, enumName(card.kind));
}

void readRecord(DeckImport& import, DeckRecordReader& reader, const DeckLayout& layout) {
    const auto line = reader.line();
    const auto fields = reader.record(layout.separator);
    auto card = cardOfRecord(fields, layout);
    if (card) {
        import.cards.push_back(std::move(*card));
    } else {
        import.problems.push_back(DeckProblem{.line = line, .text = std::move(card.error())});
    }
}

}  // namespace

std::string exportDeck(const std::vector<CardContent>& cards) {
    std::string file(kHeader);
    for (const auto& card : cards) file += exportedLine(card);
    return file;
}

std::expected<DeckImport, std::string> parseDeck(std::string_view file) {
    if (!isValidUtf8(file)) return std::unexpected("Couldn't read that file.");
    DeckRecordReader reader(withoutByteOrderMark(file));
    const auto layout = readDeckLayout(reader);
    DeckImport import;
    while (!reader.atEnd()) {
        if (isSkippedLine(reader.peekLine())) {
            reader.skipLine();
        } else {
            readRecord(import, reader, layout);
        }
    }
    if (import.cards.empty()) return std::unexpected("No cards found in that file.");
    return import;
}

}  // namespace tessary
