#include "ai/ai_provider_kind.h"

namespace tessary {
namespace {

struct Texts {
    std::string_view label;
    std::string_view badge;
    std::string_view description;
};

constexpr Texts textsOf(AIProviderKind kind) {
    switch (kind) {
        case AIProviderKind::apple:
            return {"Apple Intelligence", "Free · On this Mac",
                    "On-device and private. Can warm up the Mac on long documents."};
        case AIProviderKind::gemini:
            return {"Google Gemini", "Free · Recommended",
                    "Free with a Google account. Runs in Google's cloud, so your Mac stays cool."};
        case AIProviderKind::codex:
            return {"ChatGPT (Codex)", "Free with ChatGPT",
                    "Uses your ChatGPT plan through the Codex app. No API key."};
        case AIProviderKind::claude: return {"Claude", "", ""};
        case AIProviderKind::openai: return {"OpenAI", "", ""};
        case AIProviderKind::ollama: return {"Ollama", "", "Local models you run yourself."};
    }
    return {};
}

}  // namespace

std::string_view labelOf(AIProviderKind kind) { return textsOf(kind).label; }
std::string_view badgeOf(AIProviderKind kind) { return textsOf(kind).badge; }
std::string_view descriptionOf(AIProviderKind kind) { return textsOf(kind).description; }

bool needsKey(AIProviderKind kind) {
    return kind == AIProviderKind::gemini || kind == AIProviderKind::claude || kind == AIProviderKind::openai;
}

std::string privacyLineOf(AIProviderKind kind) {
    if (kind == AIProviderKind::apple) return "Everything stays on this Mac.";
    if (kind == AIProviderKind::ollama) return "";  // where it goes is where the user's own server is
    return std::string(labelOf(kind)) + " receives the text of the pages you generate cards and quizzes from.";
}

}  // namespace tessary
