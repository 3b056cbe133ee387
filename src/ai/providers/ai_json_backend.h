#pragma once

#include <cstddef>
#include <stop_token>
#include <string>
#include <string_view>

#include "ai/ai_error.h"

namespace tessary {

/// One job for a provider that answers with a JSON object.
struct JSONJob {
    std::string system;       ///< prompt
    std::string user;         ///< prompt
    std::string_view name;    ///< of the tool that the model is to call, as in "save_flashcards"
    std::string_view schema;  ///< JSON schema of the answer, as JSON text
    std::string_view shape;   ///< the answer's shape in one line, for models that take no schema
};

/// What providers that answer in JSON have to be able to do. Blocks; any thread, one call at a time.
class AIJSONBackend {
public:
    virtual ~AIJSONBackend() = default;

    /// User-perceived characters of source text that one job may carry.
    [[nodiscard]] virtual std::size_t maxChunkCharacters() const = 0;
    /// Whatever has to be looked at once before the first job of a run.
    [[nodiscard]] virtual AIResult<void> prepare(std::stop_token) { return {}; }
    /// The model's answer: a JSON object as text, if the model did what it was told. Never tries twice.
    [[nodiscard]] virtual AIResult<std::string> completeJSON(const JSONJob& job, std::stop_token stop) = 0;
};

/// What follows the user prompt for models that take no schema.
[[nodiscard]] inline std::string shapeInstruction(std::string_view shape) {
    return "\n\nReply with only a JSON object shaped exactly like this:\n" + std::string(shape);
}

}  // namespace tessary
