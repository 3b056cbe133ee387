#pragma once

#include <array>
#include <string_view>

#include "base/json_record.h"

namespace tessary {

/// Who writes cards, summaries and grades.
enum class AIProviderKind { apple, gemini, codex, claude, openai, ollama };

inline constexpr std::array kAIProviderKinds{AIProviderKind::apple,  AIProviderKind::gemini, AIProviderKind::codex,
                                             AIProviderKind::claude, AIProviderKind::openai, AIProviderKind::ollama};

/// What settings and error texts call it.
[[nodiscard]] std::string_view labelOf(AIProviderKind kind);
/// What it costs, in a word or two; may be empty.
[[nodiscard]] std::string_view badgeOf(AIProviderKind kind);
/// One or two sentences for the settings; may be empty.
[[nodiscard]] std::string_view descriptionOf(AIProviderKind kind);
/// Needs the user's own API key.
[[nodiscard]] bool needsKey(AIProviderKind kind);
/// What the user should know of where the text of pages goes.
[[nodiscard]] std::string privacyLineOf(AIProviderKind kind);

template <>
struct EnumNames<AIProviderKind> {
    static constexpr auto names = std::array{
        std::pair{AIProviderKind::apple, std::string_view("apple")},
        std::pair{AIProviderKind::gemini, std::string_view("gemini")},
        std::pair{AIProviderKind::codex, std::string_view("codex")},
        std::pair{AIProviderKind::claude, std::string_view("claude")},
        std::pair{AIProviderKind::openai, std::string_view("openai")},
        std::pair{AIProviderKind::ollama, std::string_view("ollama")},
    };
};

}  // namespace tessary
