#pragma once

#include <string>
#include <vector>

#include "library/library_json.h"
#include "study/flashcard_store.h"

namespace tessary {

/// Readers written by hand on the parser's own fast interface, which checks only what it passes. They are what the
/// library's reading is measured against, and no reader to use: nothing is optional, wrong input throws anything.
/// The text needs spare capacity.
[[nodiscard]] std::vector<Flashcard> cardsByHand(const std::string& text);
[[nodiscard]] FlashcardFile sharedCardsByHand(const std::string& text);
[[nodiscard]] std::vector<JournalEntry> pagesByHand(const std::string& text);

}  // namespace tessary
