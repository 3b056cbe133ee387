#include "ai/providers/provider_choice.h"

#include "ai/providers/claude_backend.h"
#include "ai/providers/gemini_backend.h"
#include "ai/providers/json_provider.h"
#include "ai/providers/ollama_backend.h"
#include "ai/providers/on_device_provider.h"
#include "ai/providers/openai_backend.h"
#include "base/text.h"

namespace tessary {
namespace {

constexpr const char* kKeyService = "com.vorlek.Notara.ai";

AIResult<std::string> readKey(AIProviderKind kind, SecretStore& secrets, std::stop_token stop) {
    const SecretStore::Result<std::optional<std::string>> key = secrets.read(keyNameOf(kind), stop);
    if (!key) return std::unexpected(keychainError(key.error()));
    const std::string text(trimmed(key->value_or("")));
    if (text.empty()) return std::unexpected(AIError::missingKey(kind));
    return text;
}

/// A backend's access with the user's own endpoint, where there is one.
template <class Access>
Access accessTo(const std::string& endpoint, const std::string& model, std::string key) {
    Access access;
    if (!trimmed(endpoint).empty()) access.endpoint = endpoint;
    access.model = model;
    access.key = std::move(key);
    return access;
}

std::unique_ptr<AIJSONBackend> makeBackend(const AISettings& settings, const ProviderPorts& ports, std::string key) {
    switch (settings.provider) {
        case AIProviderKind::gemini:
            return std::make_unique<GeminiBackend>(
                ports.http, accessTo<GeminiBackend::Access>(settings.geminiEndpoint, settings.geminiModel, key));
        case AIProviderKind::openai:
            return std::make_unique<OpenAIBackend>(
                ports.http, accessTo<OpenAIBackend::Access>(settings.openaiEndpoint, settings.openaiModel, key));
        case AIProviderKind::claude:
            return std::make_unique<ClaudeBackend>(
                ports.http, accessTo<ClaudeBackend::Access>(settings.claudeEndpoint, settings.claudeModel, key));
        case AIProviderKind::ollama:
            return std::make_unique<OllamaBackend>(
                ports.http, OllamaBackend::Access{.address = settings.ollamaURL, .model = settings.ollamaModel});
        case AIProviderKind::codex:
            return std::make_unique<CodexBackend>(ports.processes, ports.files, ports.ids, ports.codex,
                                                  std::string(trimmed(settings.codexModel)));
        case AIProviderKind::apple: break;
    }
    return nullptr;
}

}  // namespace

SecretName keyNameOf(AIProviderKind kind) { return {.service = kKeyService, .account = std::string(enumName(kind))}; }

std::string keyLabelOf(AIProviderKind kind) { return "Tessary: " + std::string(labelOf(kind)) + " API key"; }

AIError keychainError(const SecretFailure& failure) {
    switch (failure.kind) {
        case SecretFailure::Kind::cancelled: return AIError::cancelled();
        case SecretFailure::Kind::locked:
            return AIError::unavailable("Your keychain is locked. Unlock it and try again");
        case SecretFailure::Kind::noService:
            return AIError::unavailable("There is no keychain on this computer to keep an API key in");
        case SecretFailure::Kind::refused: break;
    }
    return AIError::unavailable("The keychain didn't give the API key: " + failure.message);
}

AIResult<std::unique_ptr<AIProvider>> makeProvider(const AISettings& settings, const ProviderPorts& ports,
                                                   std::stop_token stop) {
    if (settings.provider == AIProviderKind::apple) {
        return std::make_unique<OnDeviceProvider>(ports.onDevice, ports.text);
    }
    std::string key;
    if (needsKey(settings.provider)) {
        AIResult<std::string> read = readKey(settings.provider, ports.secrets, stop);
        if (!read) return std::unexpected(std::move(read.error()));
        key = *std::move(read);
    }
    return std::make_unique<JSONProvider>(makeBackend(settings, ports, std::move(key)), ports.text);
}

}  // namespace tessary
