#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "study/flashcard.h"

namespace tessary {

/// How far the questions go.
enum class CardDifficulty { basic, standard, advanced };

/// What the user wants to be written.
struct CardRequest {
    std::set<FlashcardKind> kinds;
    std::int64_t count = 0;  ///< the most cards wanted
    std::string language;    ///< by its English name; empty for the language of the source
    CardDifficulty difficulty = CardDifficulty::standard;
    std::optional<std::string> focus;  ///< what the student wants to learn most
};

/// A card as a provider wrote it, after repair: it fits `contentProblem`.
using GeneratedCard = CardContent;

template <>
struct EnumNames<CardDifficulty> {
    static constexpr auto names = std::array{
        std::pair{CardDifficulty::basic, std::string_view("basic")},
        std::pair{CardDifficulty::standard, std::string_view("standard")},
        std::pair{CardDifficulty::advanced, std::string_view("advanced")},
    };
};

/// How prompts name a language.
[[nodiscard]] inline std::string_view languagePhrase(std::string_view language) {
    return language.empty() ? "the same language as the source text" : language;
}

}  // namespace tessary
