#pragma once

#include <memory>
#include <stop_token>
#include <string>

#include "ai/ai_provider.h"
#include "ai/ai_settings.h"
#include "ai/providers/codex_backend.h"
#include "platform/http_client.h"
#include "platform/on_device_model.h"
#include "platform/secret_store.h"
#include "platform/text_services.h"

namespace tessary {

/// What providers stand on. All of it is for any thread, and outlives them.
struct ProviderPorts {
    HttpClient& http;
    SecretStore& secrets;
    ProcessRunner& processes;
    OnDeviceModel& onDevice;
    FileSystem& files;
    IdSource& ids;
    const TextServices& text;
    CodexPlaces codex;
};

/// Where the keychain has a provider's key.
[[nodiscard]] SecretName keyNameOf(AIProviderKind kind);
/// What the keychain's own window calls it.
[[nodiscard]] std::string keyLabelOf(AIProviderKind kind);

/// What a keychain that doesn't answer means to the user.
[[nodiscard]] AIError keychainError(const SecretFailure& failure);

/// The provider that the settings name, with its key from the keychain. Blocks while the keychain is asked; never the
/// main thread.
[[nodiscard]] AIResult<std::unique_ptr<AIProvider>> makeProvider(const AISettings& settings, const ProviderPorts& ports,
                                                                 std::stop_token stop);

}  // namespace tessary
