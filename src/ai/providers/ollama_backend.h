#pragma once

#include "ai/providers/ai_json_backend.h"
#include "ai/providers/http_exchange.h"

namespace tessary {

/// A server of the user's own, with local models.
class OllamaBackend final : public AIJSONBackend {
public:
    struct Access {
        std::string address = "http://127.0.0.1:11434";
        std::string model;
    };

    /// `http` outlives the backend.
    OllamaBackend(HttpClient& http, Access access);

    [[nodiscard]] std::size_t maxChunkCharacters() const override { return 8000; }
    /// Looks whether the server runs and has the model.
    [[nodiscard]] AIResult<void> prepare(std::stop_token stop) override;
    [[nodiscard]] AIResult<std::string> completeJSON(const JSONJob& job, std::stop_token stop) override;

private:
    HttpClient& http_;
    Access access_;
    HttpPeer peer_;
};

}  // namespace tessary
