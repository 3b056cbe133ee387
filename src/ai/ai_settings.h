#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "ai/ai_provider_kind.h"
#include "ai/card_request.h"
#include "ai/page_source.h"
#include "platform/settings.h"

namespace tessary {

/// What the user has set about providers, as it stands when a run starts.
struct AISettings {
    AIProviderKind provider = AIProviderKind::apple;
    std::string geminiModel;
    std::string geminiEndpoint;
    std::string openaiModel;
    std::string openaiEndpoint;
    std::string claudeModel;
    std::string claudeEndpoint;
    std::string ollamaURL;
    std::string ollamaModel;
    std::string codexModel;  ///< empty: the tool's own
    bool gentleMode = false;
    std::string language;    ///< of what is written, by its English name; empty for the language of the source
};

/// A missing or unknown value is the default. Main thread only.
[[nodiscard]] AISettings readAISettings(const Settings& settings);

/// The language that a setting or an option means: a code ("de") or a name; "system" and "" follow the source.
[[nodiscard]] std::string languageNamed(std::string_view language);

/// How many cards are wanted of a page.
enum class CardAmount { normal, many };

/// What the user has set about writing cards, and chose last time.
struct GenerationSettings {
    std::set<FlashcardKind> kinds;
    CardDifficulty difficulty = CardDifficulty::standard;
    std::int64_t maxCards = 60;
    double cardsPerPage = 1.5;
    CardAmount amount = CardAmount::normal;
    bool makeSummary = true;
    SourceChoice source = SourceChoice::whole;
};

[[nodiscard]] GenerationSettings readGenerationSettings(const Settings& settings);

/// Kinds as in "basic,cloze"; unknown ones are passed over, and none means all.
[[nodiscard]] std::set<FlashcardKind> kindsNamed(std::string_view list);

template <>
struct EnumNames<CardAmount> {
    static constexpr auto names = std::array{
        std::pair{CardAmount::normal, std::string_view("normal")},
        std::pair{CardAmount::many, std::string_view("many")},
    };
};

}  // namespace tessary
