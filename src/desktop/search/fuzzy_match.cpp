#include "desktop/search/fuzzy_match.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tessary {
namespace {

constexpr int kLetter = 1;
constexpr int kAtWordStart = 8;
constexpr int kAtNameStart = 4;     // besides
constexpr int kFollowing = 6;
constexpr int kLongestGapCost = 6;  // a point for each letter passed over
constexpr int kWholeName = 12;
constexpr std::size_t kLongestName = 120;
constexpr int kUnreachable = std::numeric_limits<int>::min() / 2;

bool separates(char32_t c) { return c < U'0' || (c > U'9' && c < U'A') || (c > U'Z' && c < U'a') || c == U'–'; }

bool isSubsequence(std::u32string_view letters, std::u32string_view name) {
    std::size_t met = 0;
    for (std::size_t i = 0; i < name.size() && met < letters.size(); ++i) met += name[i] == letters[met] ? 1 : 0;
    return met == letters.size();
}

int valueAt(std::u32string_view name, std::size_t at) {
    if (at == 0) return kLetter + kAtWordStart + kAtNameStart;
    return kLetter + (separates(name[at - 1]) ? kAtWordStart : 0);
}

/// The best score of the letters so far that ends with the last of them at each place of the name.
using Scores = std::array<int, kLongestName>;

int scoreOf(const Scores& last, std::size_t from, std::size_t at, std::u32string_view name) {
    if (last[from] == kUnreachable) return kUnreachable;
    const int gap = static_cast<int>(at - from) - 1;
    return last[from] + (gap == 0 ? kFollowing : -std::min(gap, kLongestGapCost)) + valueAt(name, at);
}

void begin(Scores& scores, char32_t letter, std::u32string_view name) {
    for (std::size_t at = 0; at < name.size(); ++at) scores[at] = name[at] == letter ? valueAt(name, at) : kUnreachable;
}

void next(Scores& scores, const Scores& last, char32_t letter, std::u32string_view name) {
    for (std::size_t at = 0; at < name.size(); ++at) {
        scores[at] = kUnreachable;
        if (name[at] != letter) continue;
        for (std::size_t from = 0; from < at; ++from) scores[at] = std::max(scores[at], scoreOf(last, from, at, name));
    }
}

}  // namespace

std::optional<int> fuzzyScore(std::u32string_view letters, std::u32string_view name) {
    const int whole = letters == name ? kWholeName : 0;
    name = name.substr(0, kLongestName);
    if (letters.empty() || !isSubsequence(letters, name)) return std::nullopt;
    Scores scores{};
    Scores last{};
    begin(scores, letters[0], name);
    for (const char32_t letter : letters.substr(1)) {
        std::copy_n(scores.begin(), name.size(), last.begin());
        next(scores, last, letter, name);
    }
    return *std::max_element(scores.begin(), scores.begin() + static_cast<std::ptrdiff_t>(name.size())) + whole;
}

std::vector<std::size_t> fuzzyPositions(std::u32string_view letters, std::u32string_view name) {
    name = name.substr(0, kLongestName);
    if (letters.empty() || !isSubsequence(letters, name)) return {};
    std::vector<Scores> rows(letters.size());
    begin(rows[0], letters[0], name);
    for (std::size_t i = 1; i < letters.size(); ++i) next(rows[i], rows[i - 1], letters[i], name);

    std::vector<std::size_t> positions(letters.size());
    const auto end = rows.back().begin() + static_cast<std::ptrdiff_t>(name.size());
    positions.back() = static_cast<std::size_t>(std::max_element(rows.back().begin(), end) - rows.back().begin());
    for (std::size_t i = letters.size() - 1; i-- > 0;) {
        const std::size_t at = positions[i + 1];
        std::size_t from = 0;
        while (scoreOf(rows[i], from, at, name) != rows[i + 1][at]) ++from;
        positions[i] = from;
    }
    return positions;
}

}  // namespace tessary
