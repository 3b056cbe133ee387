#pragma once

#include <expected>
#include <optional>
#include <string>

#include "ai/ai_provider_kind.h"

namespace tessary {

/// The one way in which AI work fails.
struct AIError {
    enum class Kind { unavailable, missingKey, network, badResponse, cancelled };

    Kind kind = Kind::unavailable;
    std::string detail = {};                         ///< of unavailable a whole sentence; never holds a key
    AIProviderKind provider = AIProviderKind::apple; ///< whose key is missing or was rejected
    std::optional<double> retryAfter = {};           ///< seconds, when the provider says so
    bool keyRejected = false;                        ///< of unavailable: asking again with this key is of no use

    [[nodiscard]] static AIError unavailable(std::string sentence);
    [[nodiscard]] static AIError missingKey(AIProviderKind provider);
    [[nodiscard]] static AIError rejectedKey(AIProviderKind provider);
    [[nodiscard]] static AIError network(std::string reason);
    [[nodiscard]] static AIError badResponse(std::string reason);
    [[nodiscard]] static AIError cancelled();

    /// One sentence for the user.
    [[nodiscard]] std::string text() const;
    /// Whether the same request may do better when it is tried again.
    [[nodiscard]] bool mayPass() const;

    friend bool operator==(const AIError&, const AIError&) = default;
};

template <class T>
using AIResult = std::expected<T, AIError>;

}  // namespace tessary
