#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/secret_store.h"

namespace tessary {

/// A keychain for one test. Any thread.
class MemorySecretStore final : public SecretStore {
public:
    /// What every call fails with from now on; calls work again with nothing.
    void failWith(std::optional<SecretFailure::Kind> kind) {
        const std::lock_guard lock(mutex_);
        failure_ = kind;
    }

    [[nodiscard]] std::size_t count() const {
        const std::lock_guard lock(mutex_);
        return entries_.size();
    }

    /// Of the last one written under this name; empty when there is none.
    [[nodiscard]] std::string label(const SecretName& name) const {
        const std::lock_guard lock(mutex_);
        const auto entry = entries_.find(keyOf(name));
        return entry == entries_.end() ? std::string() : entry->second.label;
    }

    [[nodiscard]] Result<std::optional<std::string>> read(const SecretName& name, std::stop_token stop) override {
        const std::lock_guard lock(mutex_);
        if (const auto failure = failureNow(stop)) return std::unexpected(*failure);
        const auto entry = entries_.find(keyOf(name));
        if (entry == entries_.end()) return std::nullopt;
        return entry->second.secret;
    }

    [[nodiscard]] Result<void> write(const SecretName& name, std::string_view label, std::string_view secret,
                                     std::stop_token stop) override {
        const std::lock_guard lock(mutex_);
        if (const auto failure = failureNow(stop)) return std::unexpected(*failure);
        entries_[keyOf(name)] = {std::string(label), std::string(secret)};
        return {};
    }

    [[nodiscard]] Result<bool> remove(const SecretName& name, std::stop_token stop) override {
        const std::lock_guard lock(mutex_);
        if (const auto failure = failureNow(stop)) return std::unexpected(*failure);
        return entries_.erase(keyOf(name)) > 0;
    }

private:
    struct Entry {
        std::string label;
        std::string secret;
    };
    using Key = std::pair<std::string, std::string>;

    [[nodiscard]] static Key keyOf(const SecretName& name) { return {name.service, name.account}; }

    [[nodiscard]] std::optional<SecretFailure> failureNow(const std::stop_token& stop) const {
        if (stop.stop_requested()) return SecretFailure{SecretFailure::Kind::cancelled, "The request was cancelled."};
        if (failure_) return SecretFailure{*failure_, "The keychain failed as told."};
        return std::nullopt;
    }

    mutable std::mutex mutex_;
    std::map<Key, Entry> entries_;
    std::optional<SecretFailure::Kind> failure_;
};

}  // namespace tessary
