#include "study/deck_layout.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"

namespace tessary {

namespace {

constexpr auto kNone = std::string_view::npos;

struct Headers {
    std::optional<char> separator;
    bool html = false;
    std::optional<std::string_view> columns;
    std::vector<std::size_t> leftOut;  // column indices
};

std::optional<char> separatorNamed(std::string_view value) {
    constexpr auto kSeparators = std::to_array<std::pair<std::string_view, char>>(
        {{"tab", '\t'}, {"comma", ','}, {"semicolon", ';'}, {"pipe", '|'}});
    const auto name = trimmed(value);
    for (const auto& [known, separator] : kSeparators) {
        if (equalsIgnoringAsciiCase(known, name)) return separator;
        if (value.starts_with(separator) || name == std::string_view(&separator, 1)) return separator;
    }
    return std::nullopt;
}

std::optional<std::size_t> columnIndex(std::string_view value) {
    const auto digits = trimmed(value);
    std::size_t number = 0;
    const auto* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end || number == 0) return std::nullopt;
    return number - 1;
}

constexpr std::array<std::string_view, 4> kSpecialColumns = {"tags", "deck", "notetype", "guid"};

bool isSpecialColumn(std::string_view name) {
    return std::ranges::any_of(kSpecialColumns,
                               [name](std::string_view known) { return equalsIgnoringAsciiCase(known, name); });
}

bool isSpecialColumnHeader(std::string_view key) {
    constexpr std::string_view kSuffix = " column";
    return key.ends_with(kSuffix) && isSpecialColumn(key.substr(0, key.size() - kSuffix.size()));
}

void readHeader(Headers& headers, std::string_view line) {
    const auto colon = line.find(':');
    if (colon == kNone) return;
    const auto key = asciiLowered(trimmed(line.substr(1, colon - 1)));
    const auto value = line.substr(colon + 1);
    if (key == "separator") headers.separator = separatorNamed(value);
    if (key == "html") headers.html = equalsIgnoringAsciiCase(trimmed(value), "true");
    if (key == "columns") headers.columns = value;
    if (!isSpecialColumnHeader(key)) return;
    if (const auto index = columnIndex(value)) headers.leftOut.push_back(*index);
}

char guessedSeparator(std::string_view line) {
    for (const char separator : {'\t', ';', ',', '|'}) {
        if (line.contains(separator)) return separator;
    }
    return '\t';
}

std::optional<std::size_t> columnNamed(const std::vector<std::string>& names, std::string_view wanted) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (equalsIgnoringAsciiCase(trimmed(names[i]), wanted)) return i;
    }
    return std::nullopt;
}

std::size_t firstFree(std::vector<std::size_t>& taken) {
    std::size_t index = 0;
    while (std::ranges::find(taken, index) != taken.end()) ++index;
    taken.push_back(index);
    return index;
}

DeckLayout layoutFor(const Headers& headers, std::string_view firstLine) {
    DeckLayout layout;
    layout.separator = headers.separator ? *headers.separator : guessedSeparator(firstLine);
    layout.html = headers.html;
    std::vector<std::string> names;
    if (headers.columns) names = DeckRecordReader(*headers.columns).record(layout.separator);
    auto taken = headers.leftOut;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (isSpecialColumn(trimmed(names[i]))) taken.push_back(i);
    }
    const auto front = columnNamed(names, "front");
    const auto back = columnNamed(names, "back");
    layout.kind = columnNamed(names, "kind");
    for (const auto& named : {front, back, layout.kind}) {
        if (named) taken.push_back(*named);
    }
    layout.front = front ? *front : firstFree(taken);
    layout.back = back ? *back : firstFree(taken);
    return layout;
}

bool isHeaderLine(std::string_view line) { return line.starts_with('#'); }

}  // namespace

DeckLayout readDeckLayout(DeckRecordReader& reader) {
    Headers headers;
    for (; !reader.atEnd() && isSkippedLine(reader.peekLine()); reader.skipLine()) {
        if (isHeaderLine(reader.peekLine())) readHeader(headers, reader.peekLine());
    }
    return layoutFor(headers, reader.peekLine());
}

bool isSkippedLine(std::string_view line) { return isHeaderLine(line) || trimmed(line).empty(); }

}  // namespace tessary
