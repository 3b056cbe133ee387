#pragma once

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

#include "study/flashcard.h"

namespace tessary {

/// The cards as a tab-separated text file. Explanations and source pages stay behind.
[[nodiscard]] std::string exportDeck(const std::vector<CardContent>& cards);

struct DeckProblem {
    std::size_t line;  ///< from 1; where the card begins
    std::string text;  ///< a sentence for the user

    friend bool operator==(const DeckProblem&, const DeckProblem&) = default;
};

struct DeckImport {
    std::vector<CardContent> cards;
    std::vector<DeckProblem> problems;  ///< the lines that gave no card
};

/// Reads what `exportDeck` wrote, and separated text in general. The error is a sentence for the user.
[[nodiscard]] std::expected<DeckImport, std::string> parseDeck(std::string_view file);

}  // namespace tessary
