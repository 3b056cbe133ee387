#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "desktop/desk_rig.h"
#include "desktop/settings/ai_engine_model.h"
#include "desktop/settings/card_outlook.h"
#include "desktop/settings/setting.h"
#include "study/scheduler.h"
#include "support/loopback_server.h"

namespace tessary {
namespace {

constexpr int kPatience = 20000;  ///< milliseconds until a test gives up

template <class Condition>
[[nodiscard]] bool becomes(Condition condition) {
    return QTest::qWaitFor(condition, kPatience);
}

// ---- one setting ----

class SettingTest : public testing::Test {
protected:
    Setting& of(const char* key) {
        setting_.setDesk(&rig.desk);
        setting_.setKey(key);
        return setting_;
    }

    DeskRig<> rig;

private:
    Setting setting_;
};

TEST_F(SettingTest, WhatFitsIsStoredAtOnceAndWhatDoesNotLeavesTheOldValue) {
    struct Case {
        const char* key;
        const char* good;
        std::vector<const char*> bad;
    };
    const std::vector<Case> cases{
        {"flashcards.newPerDay", "35", {"", "many", "-1", "3.5", "99999999999999999999"}},
        {"flashcards.maxCards", "1", {"0", "x"}},
        {"flashcards.cardsPerPage", "2.5", {"0", "21", "nan", "inf"}},
        {"flashcards.retention", "0.95", {"1.5", "-0.1", "often"}},
        {"flashcards.shuffle", "off", {"", "perhaps"}},
        {"flashcards.difficulty", "advanced", {"", "hard"}},
        {"flashcards.ollamaURL",
         "https://box:8080/base",
         {"box:8080", "ftp://box", "http://", "http:// box", "http:///x"}},
        {"tessary.appLanguage", "pt", {"klingon"}},
        {"tessary.reduceMotion", "on", {"slow"}},
    };
    for (const auto& [key, good, bad] : cases) {
        Setting& setting = of(key);
        EXPECT_TRUE(setting.set(good)) << key;
        EXPECT_EQ(setting.text().toStdString(), good) << key;
        for (const char* const text : bad) {
            EXPECT_FALSE(setting.set(text)) << key << " = " << text;
            EXPECT_TRUE(setting.problem().contains("doesn't fit here: it takes ")) << setting.problem().toStdString();
            EXPECT_FALSE(setting.problem().contains(key)) << "a key means nothing to people";
            EXPECT_EQ(setting.text().toStdString(), good) << key;
        }
        EXPECT_TRUE(setting.set(good));
        EXPECT_EQ(setting.problem(), "");
        EXPECT_EQ(PosixFileSystem().read(rig.paths.settings).value().contains(std::string(key).substr(11)), true)
            << key;
        EXPECT_TRUE(setting.reset());
        EXPECT_TRUE(setting.isDefault());
        EXPECT_EQ(setting.text(), setting.defaultText()) << key;
    }
}

TEST_F(SettingTest, StepsStayInTheRange) {
    Setting& most = of("flashcards.newPerDay");
    most.set("1");
    EXPECT_TRUE(most.stepBy(-1));
    EXPECT_EQ(most.text(), "0");
    EXPECT_FALSE(most.canStepBy(-1));
    EXPECT_FALSE(most.stepBy(-1));
    Setting& each = of("flashcards.cardsPerPage");
    each.set("19.8");
    EXPECT_TRUE(each.stepBy(1));
    EXPECT_EQ(each.text(), "20");
    EXPECT_FALSE(each.canStepBy(1));
    EXPECT_TRUE(each.stepBy(-1));
    EXPECT_EQ(each.text(), "19.5");
}

TEST_F(SettingTest, AListKeepsItsLastWord) {
    Setting& kinds = of("flashcards.kinds");
    EXPECT_TRUE(kinds.setHas("basic", false));
    EXPECT_TRUE(kinds.setHas("multipleChoice", false));
    EXPECT_FALSE(kinds.setHas("cloze", false));
    EXPECT_EQ(kinds.problem(), "At least one has to stay.");
    EXPECT_EQ(readGenerationSettings(rig.ports.settings).kinds, std::set{FlashcardKind::cloze});
    EXPECT_TRUE(kinds.setHas("basic", true));
    EXPECT_EQ(kinds.problem(), "");
    EXPECT_TRUE(kinds.has("basic"));
    EXPECT_FALSE(kinds.has("multiple"));
}

TEST_F(SettingTest, AChangeReachesEveryoneWhoShowsIt) {
    Setting& theme = of("tessary.theme");
    QSignalSpy changed(&theme, &Setting::changed);
    QSignalSpy followed(&rig.desk, &Desk::themeChanged);
    rig.desk.setTheme("dark");
    EXPECT_EQ(theme.text(), "dark");
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(theme.set("light"));
    EXPECT_EQ(rig.desk.theme(), "light");
    EXPECT_EQ(followed.count(), 2);
    QSignalSpy moved(&rig.desk, &Desk::reduceMotionChanged);
    of("tessary.reduceMotion").set("on");
    EXPECT_TRUE(rig.desk.reduceMotion());
    EXPECT_EQ(moved.count(), 1);
}

TEST(CardOutlookTest, MoreRetentionMeansMoreReviews) {
    CardOutlook outlook;
    int before = 0;
    for (const double retention : {0.7, 0.9, 0.97}) {
        outlook.setRetention(retention);
        EXPECT_GT(outlook.reviewsInYear(), before) << retention;
        before = outlook.reviewsInYear();
        EXPECT_GE(outlook.intervals().count(','), 1) << outlook.intervals().toStdString();
    }
    outlook.setRetention(1);
    EXPECT_EQ(outlook.retention(), 0.97) << "as the scheduler counts it";
    outlook.setRetention(std::nan(""));
    EXPECT_EQ(outlook.retention(), kDefaultRetention);
}

// ---- the AI engine ----

class AIEngineTest : public testing::Test {
protected:
    AIEngineTest() {
        for (const char* const name : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "ALL_PROXY"})
            qunsetenv(name);
        server.setHandler([](const LoopbackServer::Received& request) -> LoopbackServer::Answer {
            if (request.path == "/api/tags") return {.body = R"({"models":[{"name":"llama3.2:latest"}]})"};
            const std::string message =
                R"({"message":{"content":"{\"verdict\":\"correct\",\"score\":1,\"feedback\":\"\",\"missing\":[]}"}})";
            if (request.path == "/api/chat") return {.body = message};
            return {.status = 401, .body = "no"};
        });
        set("flashcards.ollamaURL", server.address());
        set("flashcards.openaiEndpoint", server.address());
        engine.setDesk(&rig.desk);
        engine.look();
        EXPECT_TRUE(settled());
    }

    void set(const char* key, const std::string& value) {
        EXPECT_TRUE(rig.desk.changeSetting(**findSetting(key), value));
    }
    QString text(AIProviderKind kind, AIEngineModel::Role role) {
        return engine.index(static_cast<int>(kind)).data(role).toString();
    }
    bool is(AIProviderKind kind, AIEngineModel::Role role) {
        return engine.index(static_cast<int>(kind)).data(role).toBool();
    }
    bool settled() {
        return becomes([this] {
            return std::ranges::none_of(kAIProviderKinds, [this](AIProviderKind kind) {
                return text(kind, AIEngineModel::StateRole) == "looking" || is(kind, AIEngineModel::SavingRole);
            });
        });
    }
    bool tried(AIProviderKind kind) {
        return becomes([&] {
            const QString trial = text(kind, AIEngineModel::TrialRole);
            return trial == "good" || trial == "bad";
        });
    }
    QString stateOf(AIProviderKind kind) { return text(kind, AIEngineModel::StateRole); }

    DeskRig<> rig;
    LoopbackServer server;
    AIEngineModel engine;
};

TEST_F(AIEngineTest, EachProviderSaysWhatItLacks) {
    EXPECT_EQ(stateOf(AIProviderKind::ollama), "ready");
    for (const AIProviderKind kind : {AIProviderKind::gemini, AIProviderKind::claude, AIProviderKind::openai})
        EXPECT_EQ(stateOf(kind), "noKey");
    EXPECT_EQ(stateOf(AIProviderKind::apple), "missing");
    EXPECT_EQ(text(AIProviderKind::apple, AIEngineModel::ProblemRole),
              "Apple Intelligence isn't available on this Mac");
    EXPECT_EQ(stateOf(AIProviderKind::codex), "missing");
    EXPECT_EQ(text(AIProviderKind::codex, AIEngineModel::ProblemRole),
              "Codex isn't installed. Install the Codex app or CLI (it's free with ChatGPT) and sign in with your "
              "ChatGPT account. Then open Terminal and run: codex login — choose Sign in with ChatGPT.");
    set("flashcards.ollamaModel", "qwen3");
    EXPECT_TRUE(settled());
    EXPECT_EQ(text(AIProviderKind::ollama, AIEngineModel::ProblemRole), "Run `ollama pull qwen3` first");
}

TEST_F(AIEngineTest, TheChoiceIsStoredAndTold) {
    QSignalSpy told(&engine, &AIEngineModel::chosenChanged);
    engine.choose("openai");
    EXPECT_EQ(readAISettings(rig.ports.settings).provider, AIProviderKind::openai);
    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(engine.chosenLabel(), "OpenAI");
    EXPECT_TRUE(is(AIProviderKind::openai, AIEngineModel::ChosenRole));
    EXPECT_FALSE(is(AIProviderKind::apple, AIEngineModel::ChosenRole));
}

TEST_F(AIEngineTest, AKeyGoesInIsReplacedAndComesOutAgainButIsNeverShown) {
    QSignalSpy saved(&engine, &AIEngineModel::keySaved);
    const SecretName name = keyNameOf(AIProviderKind::gemini);
    for (const char* const key : {" first-key\n", "second-key"}) {
        engine.saveKey("gemini", key);
        EXPECT_TRUE(is(AIProviderKind::gemini, AIEngineModel::SavingRole));
        ASSERT_TRUE(settled());
        EXPECT_EQ(rig.secrets.read(name, {}).value(), QString(key).trimmed().toStdString());
        EXPECT_EQ(text(AIProviderKind::gemini, AIEngineModel::KeyNoteRole), "Saved in your keychain");
        EXPECT_EQ(stateOf(AIProviderKind::gemini), "ready");
        EXPECT_TRUE(is(AIProviderKind::gemini, AIEngineModel::HasKeyRole));
    }
    EXPECT_EQ(saved.count(), 2);
    for (const int role : engine.roleNames().keys())
        EXPECT_FALSE(engine.index(1).data(role).toString().contains("second-key")) << role;
    EXPECT_FALSE(PosixFileSystem().read(rig.paths.settings).value().contains("second-key"));
    engine.removeKey("gemini");
    ASSERT_TRUE(settled());
    EXPECT_EQ(rig.secrets.count(), 0U);
    EXPECT_EQ(stateOf(AIProviderKind::gemini), "noKey");
}

TEST_F(AIEngineTest, WhatIsNoKeyIsRefusedAndNothingStored) {
    for (const auto& [key, note] : {std::pair{"   ", "No key was given."},
                                    {"two words", "This is no API key: it has spaces or special characters in it."},
                                    {"schlüssel", "This is no API key: it has spaces or special characters in it."}}) {
        engine.saveKey("claude", key);
        EXPECT_EQ(text(AIProviderKind::claude, AIEngineModel::KeyNoteRole), note);
        EXPECT_TRUE(is(AIProviderKind::claude, AIEngineModel::KeyFailedRole));
        EXPECT_FALSE(is(AIProviderKind::claude, AIEngineModel::SavingRole));
    }
    engine.saveKey("ollama", "key");
    engine.saveKey("nobody", "key");
    ASSERT_TRUE(settled());
    EXPECT_EQ(rig.secrets.count(), 0U);
}

TEST_F(AIEngineTest, AKeychainThatDoesNotAnswerHasItsOwnSentences) {
    const std::vector<std::pair<SecretFailure::Kind, QString>> cases{
        {SecretFailure::Kind::locked, "Your keychain is locked. Unlock it and try again"},
        {SecretFailure::Kind::noService, "There is no keychain on this computer to keep an API key in"},
        {SecretFailure::Kind::refused, "The keychain didn't give the API key: The keychain failed as told."},
    };
    for (const auto& [kind, sentence] : cases) {
        rig.secrets.failWith(kind);
        engine.look();
        ASSERT_TRUE(settled());
        for (const AIProviderKind keyed : {AIProviderKind::gemini, AIProviderKind::claude, AIProviderKind::openai}) {
            EXPECT_EQ(stateOf(keyed), "missing");
            EXPECT_EQ(text(keyed, AIEngineModel::ProblemRole), sentence);
        }
        EXPECT_EQ(stateOf(AIProviderKind::ollama), "ready") << "needs no key";
        engine.saveKey("openai", "a-key");
        ASSERT_TRUE(settled());
        EXPECT_TRUE(is(AIProviderKind::openai, AIEngineModel::KeyFailedRole));
        EXPECT_TRUE(text(AIProviderKind::openai, AIEngineModel::KeyNoteRole)
                        .startsWith("Couldn't save the key to the keychain. "));
        rig.secrets.failWith(std::nullopt);
        EXPECT_EQ(rig.secrets.count(), 0U);
    }
}

TEST_F(AIEngineTest, ATrialAsksTheProviderItself) {
    engine.tryOut("ollama");
    EXPECT_EQ(text(AIProviderKind::ollama, AIEngineModel::TrialRole), "running");
    ASSERT_TRUE(tried(AIProviderKind::ollama));
    EXPECT_EQ(text(AIProviderKind::ollama, AIEngineModel::TrialRole), "good");
    const auto requests = server.requests();
    EXPECT_EQ(std::ranges::count(requests, "/api/chat", &LoopbackServer::Received::path), 1);
    engine.tryOut("openai");
    ASSERT_TRUE(tried(AIProviderKind::openai));
    EXPECT_EQ(text(AIProviderKind::openai, AIEngineModel::TrialNoteRole),
              "Add your OpenAI API key in Settings → Flashcards");
    engine.saveKey("openai", "bad-key");
    ASSERT_TRUE(settled());
    engine.tryOut("openai");
    ASSERT_TRUE(tried(AIProviderKind::openai));
    EXPECT_EQ(text(AIProviderKind::openai, AIEngineModel::TrialNoteRole), "Your OpenAI API key was rejected");
}

}  // namespace
}  // namespace tessary
