#include "ai/ai_settings.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"

namespace tessary {
namespace {

std::string textOr(const Settings& settings, std::string_view key, std::string_view fallback) {
    return settings.text(key).value_or(std::string(fallback));
}

template <class E>
E enumOr(const Settings& settings, std::string_view key, E fallback) {
    const std::optional<std::string> text = settings.text(key);
    return text ? enumNamed<E>(*text).value_or(fallback) : fallback;
}

}  // namespace

std::string languageNamed(std::string_view language) {
    constexpr std::array kNames{
        std::pair{std::string_view("en"), std::string_view("English")},
        std::pair{std::string_view("es"), std::string_view("Spanish")},
        std::pair{std::string_view("fr"), std::string_view("French")},
        std::pair{std::string_view("de"), std::string_view("German")},
        std::pair{std::string_view("it"), std::string_view("Italian")},
        std::pair{std::string_view("pt"), std::string_view("Portuguese")},
    };
    const std::string code = asciiLowered(trimmed(language));
    if (code == "system") return {};
    for (const auto& [known, name] : kNames) {
        if (code == known) return std::string(name);
    }
    return std::string(trimmed(language));
}

AISettings readAISettings(const Settings& settings) {
    const std::string ownLanguage = textOr(settings, "flashcards.language", "");
    return {.provider = enumOr(settings, "flashcards.provider", AIProviderKind::apple),
            .geminiModel = textOr(settings, "flashcards.geminiModel", "gemini-2.5-flash"),
            .geminiEndpoint = textOr(settings, "flashcards.geminiEndpoint", ""),
            .openaiModel = textOr(settings, "flashcards.openaiModel", "gpt-4.1-mini"),
            .openaiEndpoint = textOr(settings, "flashcards.openaiEndpoint", ""),
            .claudeModel = textOr(settings, "flashcards.claudeModel", "claude-sonnet-5-5"),
            .claudeEndpoint = textOr(settings, "flashcards.claudeEndpoint", ""),
            .ollamaURL = textOr(settings, "flashcards.ollamaURL", "http://127.0.0.1:11434"),
            .ollamaModel = textOr(settings, "flashcards.ollamaModel", "llama3.2"),
            .codexModel = textOr(settings, "flashcards.codexModel", ""),
            .gentleMode = settings.boolean("flashcards.gentleMode").value_or(false),
            .language = languageNamed(trimmed(ownLanguage).empty() ? textOr(settings, "tessary.appLanguage", "system")
                                                                   : ownLanguage)};
}

std::set<FlashcardKind> kindsNamed(std::string_view list) {
    std::set<FlashcardKind> kinds;
    for (const std::string_view name : split(list, ',')) {
        if (const auto kind = enumNamed<FlashcardKind>(trimmed(name))) kinds.insert(*kind);
    }
    if (kinds.empty()) kinds = {FlashcardKind::basic, FlashcardKind::cloze, FlashcardKind::multipleChoice};
    return kinds;
}

GenerationSettings readGenerationSettings(const Settings& settings) {
    GenerationSettings result{.kinds = kindsNamed(textOr(settings, "flashcards.kinds", "")),
                              .difficulty = enumOr(settings, "flashcards.difficulty", CardDifficulty::standard),
                              .amount = enumOr(settings, "flashcards.lastAmount", CardAmount::normal),
                              .makeSummary = settings.boolean("flashcards.makeSummary").value_or(true),
                              .source = enumOr(settings, "flashcards.lastSource", SourceChoice::whole)};
    result.maxCards = std::max<std::int64_t>(1, settings.integer("flashcards.maxCards").value_or(result.maxCards));
    result.cardsPerPage = std::max(0.0, settings.number("flashcards.cardsPerPage").value_or(result.cardsPerPage));
    return result;
}

}  // namespace tessary
