#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "app/ai_system.h"

/// What the user sees and sets of the providers.
namespace tessary {

/// A provider as it stands.
struct ProviderState {
    AIProviderKind kind = AIProviderKind::apple;
    bool hasKey = false;             ///< of its own, in the keychain
    std::optional<AIError> problem;  ///< why it can't run now
};

/// Asks these providers in turn. A keychain that is locked is asked once only: the user has said no
/// to it. Blocks; any thread but the main one. Ends early when stopped.
void lookAtProviders(AISystem& ai, const AISettings& settings, std::span<const AIProviderKind> kinds,
                     const std::stop_token& stop, const std::function<void(const ProviderState&)>& tell);

/// Has the chosen provider check one small answer, as a review would.
[[nodiscard]] AIResult<void> tryProvider(AISystem& ai, const AISettings& settings, const std::stop_token& stop);

/// Keys travel in headers, so they are of visible ASCII characters. Without the white space around it; the error is for
/// the user.
[[nodiscard]] std::expected<std::string, std::string> checkedKey(std::string_view text);

/// Goes on after a colon.
[[nodiscard]] std::string describe(const SecretFailure& failure);

}  // namespace tessary
