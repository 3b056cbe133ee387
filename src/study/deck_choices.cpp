#include "study/deck_choices.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"

namespace tessary {

namespace {

bool isNumbered(std::string_view line, std::size_t number) { return line.starts_with(fmt::format("{}. ", number)); }

std::optional<std::size_t> firstOptionLine(const std::vector<std::string_view>& lines) {
    for (auto i = lines.size(); i-- > 1;) {
        if (isNumbered(lines[i], 1) && trimmed(lines[i - 1]).empty()) return i;
    }
    return std::nullopt;
}

}  // namespace

DeckChoices splitChoices(std::string_view front) {
    const auto lines = split(front, '\n');
    const auto first = firstOptionLine(lines);
    if (!first) return DeckChoices{.question = std::string(front), .options = {}};
    const auto blankLine = static_cast<std::size_t>(lines[*first - 1].data() - front.data());
    const auto question = front.substr(0, std::max<std::size_t>(blankLine, 1) - 1);
    DeckChoices choices{.question = std::string(question), .options = {}};
    for (auto i = *first; i < lines.size(); ++i) {
        if (isNumbered(lines[i], choices.options.size() + 1)) {
            choices.options.emplace_back(lines[i].substr(numberingLength(lines[i])));
        } else {
            choices.options.back() += '\n';
            choices.options.back() += lines[i];
        }
    }
    return choices;
}

std::size_t numberingLength(std::string_view line) {
    const auto digits = std::min(line.size(), line.find_first_not_of("0123456789"));
    return digits > 0 && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
}

std::optional<std::size_t> optionEqualTo(const std::vector<std::string>& options, std::string_view back) {
    auto found = std::ranges::find(options, back);
    if (found == options.end()) {
        found = std::ranges::find(options, trimmed(back), [](const std::string& option) { return trimmed(option); });
    }
    if (found == options.end()) return std::nullopt;
    return static_cast<std::size_t>(found - options.begin());
}

}  // namespace tessary
