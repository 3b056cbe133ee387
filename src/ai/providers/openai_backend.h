#pragma once

#include "ai/providers/ai_json_backend.h"
#include "platform/http_client.h"

namespace tessary {

/// OpenAI's chat completions, and servers that speak like it.
class OpenAIBackend final : public AIJSONBackend {
public:
    struct Access {
        std::string endpoint = "https://api.openai.com";
        std::string model;
        std::string key;
    };

    /// `http` outlives the backend.
    OpenAIBackend(HttpClient& http, Access access) : http_(http), access_(std::move(access)) {}

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return 40000; }
    [[nodiscard]] AIResult<std::string> completeJSON(const JSONJob& job, std::stop_token stop) override;

private:
    HttpClient& http_;
    Access access_;
};

}  // namespace tessary
