#pragma once

#include <expected>
#include <string>
#include <vector>

#include "study/deck_layout.h"
#include "study/flashcard.h"

namespace tessary {

/// The card that a record of a deck file tells. Without a kind of its own it is a cloze if its front holds numbered
/// blanks ("{{c1::term}}"), else basic. The error is a sentence for the user.
[[nodiscard]] std::expected<CardContent, std::string> cardOfRecord(const std::vector<std::string>& fields,
                                                                   const DeckLayout& layout);

}  // namespace tessary
