#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/secret_store.h"

namespace tessary {

/// A child process that is killed at the end, also when the test program itself is killed.
class HeldProcess {
public:
    struct Settings {
        std::vector<std::string> command;  ///< the program's absolute path comes first
        std::vector<std::string> environment;
        std::filesystem::path standardInput = "/dev/null";
        int standardOutput = -1;  ///< a descriptor; that of the test program when negative
    };

    explicit HeldProcess(const Settings& settings);
    HeldProcess(const HeldProcess&) = delete;
    HeldProcess& operator=(const HeldProcess&) = delete;
    ~HeldProcess();

    void signal(int number) const;

private:
    pid_t id_;
};

/// The session bus of the test's process, given back at the end.
class SessionBusAddress {
public:
    explicit SessionBusAddress(const std::string& address);
    SessionBusAddress(const SessionBusAddress&) = delete;
    SessionBusAddress& operator=(const SessionBusAddress&) = delete;
    ~SessionBusAddress();

private:
    std::optional<std::string> before_;
};

/// A message bus with a real keychain, in a folder of its own: nothing of the user's session is seen or touched. It is
/// the process's session bus while it lives. GLib drops its connection to a bus with the last object that uses it, so
/// that the tests of one process can have a bus each. Needs dbus-daemon, dbus-send and gnome-keyring-daemon; a failure
/// to start them throws. One thread.
class PrivateKeyring {
public:
    enum class Bus { open, refusing };

    /// The bus alone. A refusing one lets nobody talk to the keychain.
    explicit PrivateKeyring(Bus bus = Bus::open);
    PrivateKeyring(const PrivateKeyring&) = delete;
    PrivateKeyring& operator=(const PrivateKeyring&) = delete;
    ~PrivateKeyring();

    /// Starts the keychain, or starts it again. Its default collection is made by the first start of an unlocked one.
    void startUnlocked();
    void startLocked();
    void stopService();
    /// It stays on the bus, but answers no more.
    void freezeService() const;

    /// Programs on the bus, the one that asks included.
    [[nodiscard]] std::size_t connectionCount() const;
    /// How many items of this name all collections have.
    [[nodiscard]] std::size_t count(const SecretName& name) const;
    /// Collections are "login", the first default, and "session".
    void setDefaultCollection(const std::string& collection) const;

private:
    void startService(std::vector<std::string> options, const std::filesystem::path& input);
    void waitForService(std::string_view answer) const;
    [[nodiscard]] std::string send(std::vector<std::string> message) const;

    std::filesystem::path folder_;
    std::string address_;
    std::vector<std::string> environment_;
    std::unique_ptr<HeldProcess> bus_;
    std::unique_ptr<HeldProcess> service_;
    std::optional<SessionBusAddress> sessionBus_;
};

}  // namespace tessary
