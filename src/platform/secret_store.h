#pragma once

#include <expected>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace tessary {

/// What a secret is filed under.
struct SecretName {
    std::string service;
    std::string account;
};

struct SecretFailure {
    enum class Kind {
        locked,     ///< the keychain is locked, and the user did not unlock it
        noService,  ///< this computer runs no keychain
        refused,    ///< anything else
        cancelled,
    };
    Kind kind = Kind::refused;
    std::string message;  ///< the system's reason, for people; never holds a secret
};

/// Generic passwords in the user's keychain. Calls block, a locked keychain asks the user. Any thread.
class SecretStore {
public:
    template <class T>
    using Result = std::expected<T, SecretFailure>;

    virtual ~SecretStore() = default;
    /// Absent when nothing is stored under this name.
    [[nodiscard]] virtual Result<std::optional<std::string>> read(const SecretName& name, std::stop_token stop) = 0;
    /// Replaces what was stored. `label` is what the keychain's own window shows.
    [[nodiscard]] virtual Result<void> write(const SecretName& name, std::string_view label, std::string_view secret,
                                             std::stop_token stop) = 0;
    /// Tells whether there was one.
    [[nodiscard]] virtual Result<bool> remove(const SecretName& name, std::stop_token stop) = 0;
};

}  // namespace tessary
