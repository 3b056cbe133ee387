#pragma once

#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

#include "ai/providers/provider_choice.h"
#include "platform/adapters/curl/curl_http_client.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/posix/posix_file_system.h"
#include "platform/adapters/posix/posix_process_runner.h"
#include "platform/adapters/system/no_on_device_model.h"
#include "support/fakes.h"
#include "support/memory_secret_store.h"

namespace tessary {

inline constexpr std::array kHttpProviders{AIProviderKind::openai, AIProviderKind::claude, AIProviderKind::gemini,
                                           AIProviderKind::ollama};

/// The providers that speak HTTP as the program makes them, all sent to one server, each with a key of its own.
class HttpProviders {
public:
    explicit HttpProviders(std::string address) : address_(std::move(address)) {
        for (const char* name : {"http_proxy", "https_proxy", "all_proxy", "HTTPS_PROXY", "ALL_PROXY"}) unsetenv(name);
        for (const AIProviderKind kind : kHttpProviders) setKey(kind, keyOf(kind));
    }

    /// Empty for one that has none.
    [[nodiscard]] static std::string keyOf(AIProviderKind kind) {
        return needsKey(kind) ? "key-of-" + std::string(enumName(kind)) : "";
    }

    void setKey(AIProviderKind kind, const std::string& key) {
        if (!secrets_.write(keyNameOf(kind), keyLabelOf(kind), key, {})) throw std::runtime_error("No keychain.");
    }

    [[nodiscard]] AISettings settingsFor(AIProviderKind kind) const {
        return {.provider = kind,
                .geminiModel = "gemini-2.5-flash",
                .geminiEndpoint = address_,
                .openaiModel = "gpt-4.1-mini",
                .openaiEndpoint = address_ + "/",
                .claudeModel = "claude-sonnet-5-5",
                .claudeEndpoint = address_,
                .ollamaURL = address_,
                .ollamaModel = "llama3.2",
                .codexModel = "",
                .language = ""};
    }

    [[nodiscard]] std::unique_ptr<AIProvider> make(const AISettings& settings) {
        const ProviderPorts ports{.http = http_,
                                  .secrets = secrets_,
                                  .processes = processes_,
                                  .onDevice = onDevice_,
                                  .files = files_,
                                  .ids = ids_,
                                  .text = text_,
                                  .codex = {}};
        AIResult<std::unique_ptr<AIProvider>> provider = makeProvider(settings, ports, {});
        if (!provider) throw std::runtime_error(provider.error().text());
        return *std::move(provider);
    }
    [[nodiscard]] std::unique_ptr<AIProvider> make(AIProviderKind kind) { return make(settingsFor(kind)); }

private:
    std::string address_;
    CurlHttpClient http_;
    MemorySecretStore secrets_;
    PosixProcessRunner processes_;
    NoOnDeviceModel onDevice_;
    PosixFileSystem files_;
    SequentialIds ids_;
    IcuTextServices text_;
};

}  // namespace tessary
