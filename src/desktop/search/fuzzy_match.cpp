#include "desktop/search/fuzzy_match.h"

#include <algorithm>
#include <limits>
#include <string>

namespace tessary {
namespace {

constexpr int kLetter = 1;
constexpr int kAtWordStart = 8;
constexpr int kAtNameStart = 4;     // besides
constexpr int kFollowing = 6;
constexpr int kLongestGapCost = 6;  // a point for each letter passed over
constexpr int kWholeName = 12;
constexpr int kUnreachable = std::numeric_limits<int>::min() / 2;

bool separates(char32_t c) { return c < U'0' || (c > U'9' && c < U'A') || (c > U'Z' && c < U'a') || c == U'–'; }

std::u32string withoutBlanks(std::u32string_view typed) {
    std::u32string letters(typed);
    std::erase(letters, U' ');
    return letters;
}

bool isSubsequence(std::u32string_view letters, std::u32string_view name) {
    std::size_t met = 0;
    for (std::size_t i = 0; i < name.size() && met < letters.size(); ++i) met += name[i] == letters[met] ? 1 : 0;
    return met == letters.size();
}

int valueAt(std::u32string_view name, std::size_t at) {
    if (at == 0) return kLetter + kAtWordStart + kAtNameStart;
    return kLetter + (separates(name[at - 1]) ? kAtWordStart : 0);
}

/// The best score of the first letters that ends with the last of them at each place of the name, and where the letter
/// before it stood then.
struct Step {
    std::vector<int> scores;
    std::vector<std::size_t> before;
};

Step nextStep(const Step& last, char32_t letter, std::u32string_view name) {
    Step step{.scores = std::vector(name.size(), kUnreachable), .before = std::vector(name.size(), std::size_t{0})};
    for (std::size_t at = 1; at < name.size(); ++at) {
        if (name[at] != letter) continue;
        for (std::size_t from = 0; from < at; ++from) {
            if (last.scores[from] == kUnreachable) continue;
            const int gap = static_cast<int>(at - from) - 1;
            const int join = gap == 0 ? kFollowing : -std::min(gap, kLongestGapCost);
            const int score = last.scores[from] + join + valueAt(name, at);
            if (score <= step.scores[at]) continue;
            step.scores[at] = score;
            step.before[at] = from;
        }
    }
    return step;
}

}  // namespace

std::optional<FuzzyMatch> fuzzyMatch(std::u32string_view typed, std::u32string_view name) {
    constexpr std::size_t kLongestName = 120;
    name = name.substr(0, kLongestName);
    const std::u32string letters = withoutBlanks(typed);
    if (letters.empty() || !isSubsequence(letters, name)) return std::nullopt;

    std::vector<Step> steps(1);
    for (std::size_t at = 0; at < name.size(); ++at)
        steps[0].scores.push_back(name[at] == letters[0] ? valueAt(name, at) : kUnreachable);
    for (std::size_t i = 1; i < letters.size(); ++i) steps.push_back(nextStep(steps.back(), letters[i], name));

    const auto best = std::ranges::max_element(steps.back().scores);
    FuzzyMatch match{.score = *best + (typed == name ? kWholeName : 0), .positions = {}};
    auto at = static_cast<std::size_t>(best - steps.back().scores.begin());
    for (std::size_t i = letters.size(); i-- > 0;) {
        match.positions.insert(match.positions.begin(), at);
        if (i > 0) at = steps[i].before[at];
    }
    return match;
}

}  // namespace tessary
