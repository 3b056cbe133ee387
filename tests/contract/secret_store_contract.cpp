#include <gtest/gtest.h>

#include <latch>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "platform/adapters/secret_service/secret_service_store.h"
#include "support/memory_secret_store.h"
#include "support/private_keyring.h"

namespace tessary {
namespace {

using Failure = SecretFailure::Kind;

const SecretName kName = {"tessary.example", "ada"};
constexpr std::string_view kLabel = "Tessary – key";

std::stop_token stopped() {
    std::stop_source source;
    source.request_stop();
    return source.get_token();
}

/// What is stored, "(nothing)", or the failure's message.
std::string readFrom(SecretStore& store, const SecretName& name = kName) {
    const auto secret = store.read(name, {});
    if (!secret) return "failed: " + secret.error().message;
    return secret->value_or("(nothing)");
}

void writeTo(SecretStore& store, std::string_view secret, const SecretName& name = kName) {
    const auto written = store.write(name, kLabel, secret, {});
    EXPECT_TRUE(written) << written.error().message;
}

template <class T>
std::optional<Failure> failureOf(const SecretStore::Result<T>& result) {
    if (result) return std::nullopt;
    EXPECT_FALSE(result.error().message.empty());
    EXPECT_EQ(result.error().message.find('\n'), std::string::npos);
    EXPECT_EQ(result.error().message.find("s3cret"), std::string::npos);
    return result.error().kind;
}

void expectEveryCallFails(SecretStore& store, Failure kind, std::stop_token stop = {}) {
    EXPECT_EQ(failureOf(store.read(kName, stop)), kind);
    EXPECT_EQ(failureOf(store.write(kName, kLabel, "s3cret", stop)), kind);
    EXPECT_EQ(failureOf(store.remove(kName, stop)), kind);
}

enum class Kind { memory, keyring };

class SecretStoreContract : public ::testing::TestWithParam<Kind> {
protected:
    SecretStoreContract() {
        if (GetParam() == Kind::memory) {
            store_ = std::make_unique<MemorySecretStore>();
            return;
        }
        keyring_ = std::make_unique<PrivateKeyring>();
        keyring_->startUnlocked();
        store_ = std::make_unique<SecretServiceStore>();
    }

    std::unique_ptr<PrivateKeyring> keyring_;
    std::unique_ptr<SecretStore> store_;
};

TEST_P(SecretStoreContract, KeepsReplacesAndRemoves) {
    EXPECT_EQ(readFrom(*store_), "(nothing)");
    EXPECT_EQ(store_->remove(kName, {}), false);
    writeTo(*store_, "old");
    EXPECT_EQ(readFrom(*store_), "old");
    writeTo(*store_, "new");
    EXPECT_EQ(readFrom(*store_), "new");
    EXPECT_EQ(store_->remove(kName, {}), true);
    EXPECT_EQ(readFrom(*store_), "(nothing)");
    EXPECT_EQ(store_->remove(kName, {}), false);
}

TEST_P(SecretStoreContract, KeepsEverySecretAsItIs) {
    for (const std::string& secret :
         {std::string("sk-0123 \t\n"), std::string("Schlüssel 🔑"), std::string(), std::string(8192, 'x')}) {
        writeTo(*store_, secret);
        EXPECT_EQ(readFrom(*store_), secret);
    }
}

TEST_P(SecretStoreContract, TellsNamesApart) {
    const std::vector<SecretName> names = {{"a", "b"}, {"a", "c"}, {"c", "b"}, {"a", ""}, {"ä", "🔑"}};
    for (const SecretName& name : names) writeTo(*store_, name.service + "/" + name.account, name);
    EXPECT_EQ(store_->remove(names[1], {}), true);
    EXPECT_EQ(readFrom(*store_, names[1]), "(nothing)");
    for (const std::size_t i : {0U, 2U, 3U, 4U}) {
        EXPECT_EQ(readFrom(*store_, names[i]), names[i].service + "/" + names[i].account);
    }
}

TEST_P(SecretStoreContract, DoesNothingWhenCancelledBefore) {
    writeTo(*store_, "kept");
    expectEveryCallFails(*store_, Failure::cancelled, stopped());
    EXPECT_EQ(readFrom(*store_), "kept");
}

TEST_P(SecretStoreContract, ServesSeveralThreadsAtOnce) {
    constexpr int kThreads = 4;
    std::latch start(kThreads);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&, i] {
                const SecretName own = {"own", std::to_string(i)};
                start.arrive_and_wait();
                for (int round = 0; round < 5; ++round) {
                    writeTo(*store_, std::to_string(round), own);
                    writeTo(*store_, "shared");
                    EXPECT_EQ(readFrom(*store_, own), std::to_string(round));
                    EXPECT_EQ(readFrom(*store_), "shared");
                }
                EXPECT_EQ(store_->remove(own, {}), true);
            });
        }
    }
    EXPECT_EQ(readFrom(*store_), "shared");
}

TEST_P(SecretStoreContract, BearsRemovalByAnotherThread) {
    constexpr int kThreads = 3;
    std::latch start(kThreads);
    std::vector<std::jthread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            for (int round = 0; round < 10; ++round) {
                writeTo(*store_, "shared");
                const std::string found = readFrom(*store_);
                EXPECT_TRUE(found == "shared" || found == "(nothing)") << found;
                const auto removed = store_->remove(kName, {});
                EXPECT_TRUE(removed) << removed.error().message;
            }
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Stores, SecretStoreContract, ::testing::Values(Kind::memory, Kind::keyring),
                         [](const auto& instance) { return instance.param == Kind::memory ? "memory" : "keyring"; });

TEST(MemorySecretStore, FailsAsTold) {
    MemorySecretStore store;
    writeTo(store, "kept");
    store.failWith(Failure::refused);
    expectEveryCallFails(store, Failure::refused);
    store.failWith(std::nullopt);
    EXPECT_EQ(readFrom(store), "kept");
    EXPECT_EQ(store.label(kName), kLabel);
    EXPECT_EQ(store.count(), 1U);
}

class SecretServiceStoreTest : public ::testing::Test {
protected:
    PrivateKeyring keyring_;
    SecretServiceStore store_;
};

TEST_F(SecretServiceStoreTest, FindsAKeychainThatWasStartedAgain) {
    keyring_.startUnlocked();
    writeTo(store_, "kept");
    keyring_.startUnlocked();
    EXPECT_EQ(readFrom(store_), "kept");
}

TEST_F(SecretServiceStoreTest, TellsALockedSecretFromAnAbsentOne) {
    keyring_.startUnlocked();
    writeTo(store_, "kept");
    keyring_.startLocked();
    expectEveryCallFails(store_, Failure::locked);
    EXPECT_EQ(readFrom(store_, {"other", "ada"}), "(nothing)");
    keyring_.startUnlocked();
    EXPECT_EQ(readFrom(store_), "kept");
}

TEST_F(SecretServiceStoreTest, LeavesNoOtherEntryOfTheNameBehind) {
    keyring_.startUnlocked();
    for (const bool removes : {false, true}) {
        keyring_.setDefaultCollection("session");
        writeTo(store_, "old");
        keyring_.setDefaultCollection("login");
        ASSERT_EQ(keyring_.count(kName), 1U);
        writeTo(store_, "new");
        EXPECT_EQ(keyring_.count(kName), 1U);
        EXPECT_EQ(readFrom(store_), "new");
        if (removes) {
            EXPECT_EQ(store_.remove(kName, {}), true);
            EXPECT_EQ(keyring_.count(kName), 0U);
        }
    }
}

TEST_F(SecretServiceStoreTest, RefusesWithoutADefaultCollection) {
    keyring_.startLocked();
    EXPECT_EQ(readFrom(store_), "(nothing)");
    EXPECT_EQ(failureOf(store_.write(kName, kLabel, "s3cret", {})), Failure::refused);
}

TEST_F(SecretServiceStoreTest, RefusesNamesThatTheBusCannotCarry) {
    keyring_.startUnlocked();
    for (const SecretName& name : {SecretName{"\xff", "a"}, SecretName{"a", std::string("b\0c", 3)}}) {
        EXPECT_EQ(failureOf(store_.read(name, {})), Failure::refused);
        EXPECT_EQ(failureOf(store_.write(name, kLabel, "s3cret", {})), Failure::refused);
        EXPECT_EQ(failureOf(store_.remove(name, {})), Failure::refused);
    }
    EXPECT_EQ(failureOf(store_.write(kName, "\xff", "s3cret", {})), Failure::refused);
}

TEST_F(SecretServiceStoreTest, TellsThatThereIsNoKeychain) { expectEveryCallFails(store_, Failure::noService); }

TEST(SecretServiceStore, TellsThatThereIsNoBus) {
    for (const char* address : {"unix:path=/nonexistent/bus", "nonsense"}) {
        const SessionBusAddress session(address);
        SecretServiceStore store;
        expectEveryCallFails(store, Failure::noService);
    }
}

TEST(SecretServiceStore, PassesOnARefusal) {
    PrivateKeyring keyring(PrivateKeyring::Bus::refusing);
    keyring.startUnlocked();
    SecretServiceStore store;
    expectEveryCallFails(store, Failure::refused);
}

TEST_F(SecretServiceStoreTest, StopsWaitingForAKeychainThatDoesNotAnswer) {
    keyring_.startUnlocked();
    keyring_.freezeService();
    const std::size_t connections = keyring_.connectionCount();
    std::stop_source stop;
    std::optional<Failure> failure;
    std::jthread thread([&] { failure = failureOf(store_.read(kName, stop.get_token())); });
    while (keyring_.connectionCount() <= connections) {
    }
    stop.request_stop();
    thread.join();
    EXPECT_EQ(failure, Failure::cancelled);
}

}  // namespace
}  // namespace tessary
