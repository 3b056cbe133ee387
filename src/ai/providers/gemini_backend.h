#pragma once

#include "ai/providers/ai_json_backend.h"
#include "platform/http_client.h"

namespace tessary {

/// Gemini's REST interface, "generateContent".
class GeminiBackend final : public AIJSONBackend {
public:
    struct Access {
        std::string endpoint = "https://generativelanguage.googleapis.com";
        std::string model;
        std::string key;
    };

    /// `http` outlives the backend.
    GeminiBackend(HttpClient& http, Access access) : http_(http), access_(std::move(access)) {}

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return 120000; }
    [[nodiscard]] AIResult<std::string> completeJSON(const JSONJob& job, std::stop_token stop) override;

private:
    HttpClient& http_;
    Access access_;
};

}  // namespace tessary
