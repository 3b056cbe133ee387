#pragma once

#include "ai/answer_grader.h"
#include "ai/flashcard_generator.h"
#include "ai/providers/provider_choice.h"
#include "app/app_paths.h"
#include "app/workspace.h"
#include "platform/adapters/curl/curl_http_client.h"
#include "platform/adapters/linux/linux_thermal_state.h"
#include "platform/adapters/poppler/poppler_pdf_reader.h"
#include "platform/adapters/posix/posix_process_runner.h"
#include "platform/adapters/secret_service/secret_service_store.h"
#include "platform/adapters/system/no_on_device_model.h"
#include "platform/adapters/threads/thread_sleeper.h"

namespace tessary {

/// The real ports of AI work. The keychain is the user's own, whatever folder the library lies in.
class AISystem {
public:
    /// What it takes from the rest of the program; all of it outlives the system.
    struct Shared {
        FileSystem& files;
        IdSource& ids;
        const TextServices& text;
        SecretStore* secrets = nullptr;  ///< in place of the user's own keychain
    };

    AISystem(Shared shared, const Environment& environment);

    [[nodiscard]] SecretStore& secrets() { return secrets_; }
    [[nodiscard]] PdfReader& pdfs() { return pdfs_; }

    /// For `makeProvider` on any thread.
    [[nodiscard]] AIResult<std::unique_ptr<AIProvider>> makeProvider(const AISettings& settings, std::stop_token stop);

    /// Both outlive the services.
    [[nodiscard]] GeneratorServices generatorServices(Workspace& workspace);

private:
    Shared shared_;
    CodexPlaces codex_;
    CurlHttpClient http_;
    SecretServiceStore keychain_;
    SecretStore& secrets_;
    PosixProcessRunner processes_;
    NoOnDeviceModel onDevice_;
    LinuxThermalState thermal_;
    ThreadSleeper sleeper_;
    PopplerPdfReader pdfs_;
};

}  // namespace tessary
