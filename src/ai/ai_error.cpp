#include "ai/ai_error.h"

#include <utility>

namespace tessary {

AIError AIError::unavailable(std::string sentence) {
    return {.kind = Kind::unavailable, .detail = std::move(sentence)};
}

AIError AIError::missingKey(AIProviderKind provider) { return {.kind = Kind::missingKey, .provider = provider}; }

AIError AIError::rejectedKey(AIProviderKind provider) {
    return {.kind = Kind::unavailable,
            .detail = "Your " + std::string(labelOf(provider)) + " API key was rejected",
            .provider = provider,
            .keyRejected = true};
}

AIError AIError::network(std::string reason) { return {.kind = Kind::network, .detail = std::move(reason)}; }

AIError AIError::badResponse(std::string reason) { return {.kind = Kind::badResponse, .detail = std::move(reason)}; }

AIError AIError::cancelled() { return {.kind = Kind::cancelled}; }

std::string AIError::text() const {
    switch (kind) {
        case Kind::unavailable: return detail;
        case Kind::missingKey:
            return "Add your " + std::string(labelOf(provider)) + " API key in Settings → Flashcards";
        case Kind::network: return "Couldn't reach the AI: " + detail;
        case Kind::badResponse: return "The AI answered something unexpected: " + detail;
        case Kind::cancelled: break;
    }
    return "Generation cancelled";
}

bool AIError::mayPass() const { return kind != Kind::missingKey && kind != Kind::cancelled && !keyRejected; }

}  // namespace tessary
