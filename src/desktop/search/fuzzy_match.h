#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace tessary {

/// How well what was typed stands for a name.
struct FuzzyMatch {
    int score = 0;  ///< the more the better
    /// The characters that were met, in order.
    std::vector<std::size_t> positions;
};

/// All letters of `typed`, in order, with anything between them; blanks in `typed` are passed over. Letters at the
/// start of words and letters that follow each other count most, so that "nn" and "newno" both mean "New notebook".
/// Both texts are folded already.
[[nodiscard]] std::optional<FuzzyMatch> fuzzyMatch(std::u32string_view typed, std::u32string_view name);

}  // namespace tessary
