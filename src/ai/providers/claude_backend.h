#pragma once

#include "ai/providers/ai_json_backend.h"
#include "platform/http_client.h"

namespace tessary {

/// Anthropic's messages interface. The answer comes as the input of a tool that the model is made to call.
class ClaudeBackend final : public AIJSONBackend {
public:
    struct Access {
        std::string endpoint = "https://api.anthropic.com";
        std::string model;
        std::string key;
    };

    /// `http` outlives the backend.
    ClaudeBackend(HttpClient& http, Access access) : http_(http), access_(std::move(access)) {}

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return 60000; }
    [[nodiscard]] AIResult<std::string> completeJSON(const JSONJob& job, std::stop_token stop) override;

private:
    HttpClient& http_;
    Access access_;
};

}  // namespace tessary
