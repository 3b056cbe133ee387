#pragma once

#include "platform/secret_store.h"

namespace tessary {

/// The keychain of a Linux desktop: the Secret Service on the session bus. New secrets go to its default collection,
/// all unlocked or unlockable ones are read. Another program's entries of the same service and account count, too: the
/// newest is read, and writing or removing leaves none of them behind.
///
/// Each call is a conversation of its own, so that a keychain that was started again is found again. So is a bus, once
/// no call is under way and nothing else in the program holds GLib's connection to the old one.
class SecretServiceStore final : public SecretStore {
public:
    [[nodiscard]] Result<std::optional<std::string>> read(const SecretName& name, std::stop_token stop) override;
    [[nodiscard]] Result<void> write(const SecretName& name, std::string_view label, std::string_view secret,
                                     std::stop_token stop) override;
    [[nodiscard]] Result<bool> remove(const SecretName& name, std::stop_token stop) override;
};

}  // namespace tessary
