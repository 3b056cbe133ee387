#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "study/flashcard.h"

namespace tessary {

/// The cards a note's text holds, in order and without repeated questions: "Question :: Answer" lines, "Q:" and "A:"
/// pairs, and sentences with {{terms}} or ==terms==. Code holds none.
[[nodiscard]] std::vector<CardContent> cardsInText(std::string_view text);

/// What stays the same when only a card's answer changes.
[[nodiscard]] std::string questionKey(const CardContent& content);

}  // namespace tessary
