#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

/// The front of a multiple-choice card in a deck file: the question, a blank line and the options, "1. " before the
/// first.
struct DeckChoices {
    std::string question;
    std::vector<std::string> options;  ///< without their numbers
};

/// Entities must still be undecoded: they keep a line of the question or of an option from reading as numbered. Lines
/// end with "\n".
[[nodiscard]] DeckChoices splitChoices(std::string_view front);

/// The length of the "12. " a line begins with; 0 without one.
[[nodiscard]] std::size_t numberingLength(std::string_view line);

/// The option that a back names: the same text, or else the same but for white space at its ends.
[[nodiscard]] std::optional<std::size_t> optionEqualTo(const std::vector<std::string>& options, std::string_view back);

}  // namespace tessary
