#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace tessary {

/// How well what was typed stands for a name, the more the better; absent when it does not at all.
///
/// All of its letters are met, in order, with anything between them. Letters at the start of words and letters that
/// follow each other count most, so that "nn" and "newno" both mean "New notebook". Both texts are folded already, and
/// `letters` has no blanks. Only the first 120 letters of a name are looked at.
[[nodiscard]] std::optional<int> fuzzyScore(std::u32string_view letters, std::u32string_view name);

/// Which letters of the name are met for that score, in order; none when there is no score.
[[nodiscard]] std::vector<std::size_t> fuzzyPositions(std::u32string_view letters, std::u32string_view name);

}  // namespace tessary
