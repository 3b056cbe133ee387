#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "base/text.h"
#include "desktop/desk_rig.h"
#include "desktop/generation/generation_model.h"
#include "support/loopback_server.h"

namespace tessary {
namespace {

using Answer = LoopbackServer::Answer;
using Model = GenerationModel;

/// What an answer of the provider looks like whose content is this JSON.
Answer saying(std::string json) {
    std::string escaped;
    for (const char c : json) escaped += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return {.body = R"({"message":{"content":")" + escaped + R"("}})"};
}

std::string basicJson(const std::string& front) { return R"({"kind":"basic","front":")" + front + R"(","back":"B"})"; }

Answer cards(const std::vector<std::string>& fronts) {
    std::vector<std::string> each;
    for (const std::string& front : fronts) each.push_back(basicJson(front));
    return saying("{\"cards\":[" + joined(each, ",") + "]}");
}

/// As many parts as this for a provider that takes 8,000 characters at a time.
std::string bodyOfParts(int parts) {
    std::string body;
    for (int i = 0; i < parts; ++i) body += std::string(7900, static_cast<char>('a' + i)) + "\n\n";
    return body;
}

/// A run against a provider on this computer, whose answers are queued before it starts.
class GenerationTest : public testing::Test {
protected:
    GenerationTest() {
        server.setHandler([this](const LoopbackServer::Received& request) -> Answer {
            if (request.path == "/api/tags") return {.body = R"({"models":[{"name":"llama3.2:latest"}]})"};
            const std::lock_guard lock(mutex);
            if (answers.empty()) return {.manner = Answer::Manner::hang};
            Answer answer = answers.front();
            answers.pop_front();
            return answer;
        });
        set("flashcards.provider", "ollama");
        set("flashcards.ollamaURL", server.address());
        set("flashcards.makeSummary", "false");
        choices.setDesk(&rig.desk);
        model.setDesk(&rig.desk);
    }

    void set(const std::string& key, const std::string& text) { ASSERT_TRUE(rig.ports.settings.setText(key, text)); }
    std::string setting(const std::string& key) { return rig.ports.settings.text(key).value_or(""); }
    void answer(std::initializer_list<Answer> next) {
        const std::lock_guard lock(mutex);
        answers.assign(next);
    }
    /// Opens the choices and waits until what there is to know of them is known.
    void open(PageId of, const QString& selection = "") {
        choices.open(toQml(of), selection);
        EXPECT_TRUE(QTest::qWaitFor([this] { return choices.readiness() != GenerationChoices::Looking; }));
    }
    void run() {
        model.start(&choices);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !model.running(); }));
    }
    /// The prompts that asked for cards.
    std::vector<std::string> prompts() const {
        std::vector<std::string> bodies;
        for (const auto& request : server.requests())
            if (request.path == "/api/chat") bodies.push_back(request.body);
        return bodies;
    }
    QStringList texts(int role) const {
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row) all.append(model.data(model.index(row), role).toString());
        return all;
    }
    std::size_t inDeck() const { return rig.cards().cards().size(); }

    std::mutex mutex;
    std::deque<Answer> answers;
    LoopbackServer server;
    DeskRig<> rig;
    GenerationChoices choices;
    GenerationModel model;
    PageId page = rig.addPage("Light", {}, "Light makes ATP.");
};

TEST_F(GenerationTest, CardsComeIntoTheDeckAndTheChoicesAreRemembered) {
    answer(
        {saying(R"({"cards":[{"kind":"cloze","front":"Light makes {{ATP}}.","back":""},)" + basicJson("Why?") + "]}")});
    open(page);
    choices.setMultipleChoice(false);
    choices.setDifficulty(2);
    choices.setAmount(GenerationChoices::Many);
    choices.setFocus(" energy ");
    QStringList progress;
    QObject::connect(&model, &Model::changed, &model, [&] {
        if (model.running()) progress.append(model.progress());
    });
    QSignalSpy ended(&model, &Model::ended);
    run();
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(std::tuple(model.phase(), model.outcome(), model.hint(), model.warnings()),
              std::tuple(Model::Done, "2 cards added", "", QStringList()));
    EXPECT_EQ(progress.front(), "Writing your cards…");
    EXPECT_TRUE(progress.contains("Writing cards — part 1 of 1"));
    EXPECT_EQ(texts(Model::FrontRole), QStringList({"Light makes […].", "Why?"}));
    EXPECT_EQ(texts(Model::BackRole), QStringList({"ATP", "B"}));
    EXPECT_EQ(texts(Model::KindNameRole), QStringList({"Cloze", "Basic"}));
    EXPECT_EQ(inDeck(), 2U);
    EXPECT_NE(prompts().at(0).find("The student asked to focus on: energy."), std::string::npos);
    for (const auto& [key, value] : {std::pair{"kinds", "basic,cloze"},
                                     {"difficulty", "advanced"},
                                     {"lastAmount", "many"},
                                     {"provider", "ollama"}}) {
        EXPECT_EQ(setting(std::string("flashcards.") + key), value) << key;
    }
}

TEST_F(GenerationTest, CancelledMidwayItKeepsWhatIsInTheDeckUntilAllIsUndone) {
    answer({cards({"One?", "Two?"})});
    open(rig.addPage("Long", {}, bodyOfParts(2)));
    model.start(&choices);
    server.waitForRequests(4);  // the provider is looked at twice, then there are two parts
    ASSERT_TRUE(QTest::qWaitFor([this] { return model.written() == 2; }));
    QSignalSpy refused(&rig.desk, &Desk::refused);
    model.start(&choices);
    EXPECT_EQ(refused.takeFirst().at(0), "Cards for “Long” are still being written.");
    model.undoAll();
    model.leave();
    EXPECT_EQ(model.written(), 2) << "only a run that is over is forgotten";
    model.cancel();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !model.running(); }));
    EXPECT_EQ(std::tuple(model.phase(), model.outcome()), std::tuple(Model::Cancelled, "Generation cancelled"));
    EXPECT_EQ(inDeck(), 2U);

    std::vector<std::size_t> changes;
    const Subscription watching =
        rig.cards().changed.connect([&](const std::vector<CardId>& ids) { changes.push_back(ids.size()); });
    QSignalSpy told(&model, &Model::told);
    model.undoAll();
    EXPECT_EQ(changes, std::vector<std::size_t>{2}) << "in one change";
    EXPECT_EQ(told.takeFirst().at(0), "2 cards taken back");
    EXPECT_EQ(std::tuple(inDeck(), model.phase(), model.rowCount()), std::tuple(0U, Model::Idle, 0));
}

TEST_F(GenerationTest, APartThatFailsAndDuplicatesAreToldOf) {
    const Answer broken{.status = 500, .body = R"({"error":{"message":"out of memory"}})"};
    answer({cards({"One?", "ONE"}), broken, broken, cards({"one", "Three?"})});
    open(rig.addPage("Long", {}, bodyOfParts(3)));
    run();
    EXPECT_EQ(model.outcome(), "2 cards added");
    EXPECT_EQ(model.warnings(),
              QStringList({"Part 2 of 3 has no cards: The AI answered something unexpected: HTTP 500: out of memory",
                           "2 cards were left out: others ask the same."}));
    EXPECT_EQ(texts(Model::FrontRole), QStringList({"One?", "Three?"}));
}

TEST_F(GenerationTest, FailuresComeWithAHintWhereTheProviderIsAtFault) {
    const PageId empty = rig.addPage("Empty");
    const Answer broken{.status = 500};
    struct Case {
        PageId page;
        Answer answer;
        QString outcome;
        QString hint;
    };
    for (const Case& each : {Case{empty, cards({}), "This page has no text yet.", ""},
                             Case{page, cards({}), "The AI couldn't write any cards.", ""},
                             Case{page, broken, "The AI answered something unexpected: HTTP 500: ",
                                  "Check the engine in Settings → Flashcards."}}) {
        answer({each.answer, each.answer});
        open(each.page);
        run();
        EXPECT_EQ(std::tuple(model.phase(), model.outcome(), model.hint()),
                  std::tuple(Model::Failed, each.outcome, each.hint));
    }
    answer({cards({"At last?"})});
    model.retry();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !model.running(); }));
    EXPECT_EQ(model.outcome(), "1 card added");
}

TEST_F(GenerationTest, AProviderThatIsNotReadyBeginsNothing) {
    const std::string refused = LoopbackServer::refusedAddress();
    set("flashcards.ollamaURL", refused);
    open(page);
    EXPECT_EQ(choices.readiness(), GenerationChoices::Unready);
    EXPECT_EQ(choices.providerProblem().toStdString(), "Ollama isn't running at " + refused);
    EXPECT_EQ(choices.problem(), "Ollama can't write cards yet.");
    model.start(&choices);
    EXPECT_EQ(model.phase(), Model::Idle);
    EXPECT_EQ(setting("flashcards.kinds"), "");

    set("flashcards.ollamaURL", server.address());
    server.answerNext({.manner = Answer::Manner::hang});
    choices.open(toQml(page), "");
    server.waitForRequests(1);
    open(page);
    EXPECT_EQ(choices.readiness(), GenerationChoices::Ready) << "the last look counts, the first never ends";
    choices.setProvider(4);
    EXPECT_EQ(choices.providerNote(), "OpenAI receives the text of the pages you generate cards and quizzes from.");
}

TEST_F(GenerationTest, SingleCardsAreDroppedPutBackAndChanged) {
    answer({cards({"One?", "Two?", "Three?"})});
    open(page);
    run();
    model.setKept(0, false);
    EXPECT_EQ(std::tuple(inDeck(), model.kept(), model.written()), std::tuple(2U, 2, 3));
    model.setKept(0, true);
    EXPECT_EQ(std::tuple(inDeck(), model.kept()), std::tuple(3U, 3));

    QVariantMap draft = model.draft(1);
    draft["front"] = " ";
    EXPECT_EQ(model.problemOf(1, draft), "The front is empty.");
    draft["front"] = "Changed?";
    draft["back"] = "";
    EXPECT_EQ(model.problemOf(1, draft), "The back is empty.");
    model.edit(1, draft);
    EXPECT_EQ(texts(Model::FrontRole)[1], "Two?");
    draft["back"] = "Yes";
    model.edit(1, draft);
    EXPECT_EQ(texts(Model::FrontRole)[1], "Changed?");

    const RecordList<Flashcard>::Snapshot deck = rig.cards().cards().snapshot();
    rig.cards().remove(deck.front()->id);
    CardContent other = contentOf(*deck.back());
    other.front = "Elsewhere?";
    rig.cards().edit(deck.back()->id, other);
    ASSERT_TRUE(QTest::qWaitFor([this] { return model.kept() == 2; }));
    EXPECT_TRUE(texts(Model::FrontRole).contains("Elsewhere?"));
    model.undoAll();
    EXPECT_EQ(inDeck(), 0U);
}

TEST_F(GenerationTest, UndoTakesTheSummaryToTheTrash) {
    set("flashcards.makeSummary", "true");
    answer({cards({"One?"}), saying(R"({"summary":"In short.","key_points":["Light"],"glossary":[]})")});
    open(page);
    run();
    ASSERT_TRUE(model.hasSummary());
    EXPECT_EQ(rig.library().entries().size(), 2U);
    model.undoAll();
    EXPECT_EQ(std::tuple(rig.library().entries().size(), rig.library().trash().size(), inDeck()),
              std::tuple(1U, 1U, 0U));
}

TEST_F(GenerationTest, OnlyWhatIsChosenIsRead) {
    JournalEntry entry = *rig.library().entries().find(page);
    for (const char* const name : {"plain.pdf", "marks.pdf"}) {
        const std::filesystem::path file = std::filesystem::path(TESSARY_FIXTURES) / "pdf" / name;
        entry.pdfAttachments.push_back(rig.library().addMedia(MediaKind::pdf, file).value());
    }
    ASSERT_TRUE(rig.library().updatePage(entry));
    struct Case {
        const char* name;
        QString selection;
        std::function<void()> choose;
        std::vector<std::string> read;
        std::vector<std::string> notRead;
        const char* remembered;
    };
    const std::string text = "Light makes ATP.";
    const std::string pdf = "oxidative phosphorylation";
    const std::vector<Case> table{
        {"all of it", "", [] {}, {text, pdf}, {}, "whole"},
        {"the text alone", "", [&] { choices.choose(1, false), choices.choose(2, false); }, {text}, {pdf}, "pages"},
        {"as last time", "", [] {}, {text}, {pdf}, "pages"},
        {"one PDF alone", "", [&] { choices.choose(1, true), choices.choose(0, false); }, {pdf}, {text}, "whole"},
        {"the selection", " Only this. ", [] {}, {"Only this."}, {text, pdf}, "whole"},
        {"the text after all", "Only this.", [&] { choices.choose(0, true); }, {text}, {"Only this."}, "whole"},
    };
    for (const Case& each : table) {
        answer({cards({each.name})});
        open(page, each.selection);
        each.choose();
        run();
        for (const std::string& part : each.read)
            EXPECT_NE(prompts().back().find(part), std::string::npos) << each.name;
        for (const std::string& part : each.notRead)
            EXPECT_EQ(prompts().back().find(part), std::string::npos) << each.name;
        EXPECT_EQ(setting("flashcards.lastSource"), each.remembered) << each.name;
    }
}

TEST_F(GenerationTest, HighlightsAreOfferedWhereThereAreSome) {
    const auto attach = [this](const char* name) {
        JournalEntry entry = *rig.library().entries().find(page);
        const std::filesystem::path file = std::filesystem::path(TESSARY_FIXTURES) / "pdf" / name;
        entry.pdfAttachments = {rig.library().addMedia(MediaKind::pdf, file).value()};
        EXPECT_TRUE(rig.library().updatePage(entry));
    };
    open(page);
    EXPECT_FALSE(choices.hasHighlights()) << "there is no PDF";
    EXPECT_EQ(choices.amountText(), "About 5 cards");
    set("flashcards.lastSource", "highlights");
    attach("plain.pdf");
    open(page);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !choices.hasHighlights(); }));
    EXPECT_FALSE(choices.onlyHighlights());
    EXPECT_EQ(choices.chosen(), QList<bool>({true, true}));

    attach("marks.pdf");
    open(page);
    EXPECT_TRUE(choices.onlyHighlights());
    EXPECT_EQ(choices.chosen(), QList<bool>({false, true}));
    choices.choose(0, true);
    EXPECT_FALSE(choices.onlyHighlights());
    choices.setOnlyHighlights(true);
    EXPECT_EQ(choices.chosen(), QList<bool>({false, true}));
    EXPECT_EQ(choices.options().source, SourceChoice::highlights);
    choices.choose(1, false);
    EXPECT_EQ(choices.problem(), "Choose something to read.");
}

TEST_F(GenerationTest, HowManyAreAskedFor) {
    open(rig.addPage("Long", {}, std::string(18000, 'x')));
    struct Case {
        GenerationChoices::Amount amount;
        QString text;
        std::optional<CardAmount> wanted;
        std::int64_t count;
    };
    for (const Case& each : {Case{GenerationChoices::Few, "About 7 cards", std::nullopt, 7},
                             Case{GenerationChoices::Usual, "About 15 cards", CardAmount::normal, 0},
                             Case{GenerationChoices::Many, "About 30 cards", CardAmount::many, 0},
                             Case{GenerationChoices::ByNumber, "Up to 60 cards", std::nullopt, 60}}) {
        choices.setAmount(each.amount);
        choices.setNumber(1000);
        const GenerationOptions options = choices.options();
        EXPECT_EQ(std::tuple(choices.amountText(), options.amount), std::tuple(each.text, each.wanted));
        if (!each.wanted) {
            EXPECT_EQ(options.request.count, each.count);
        }
    }
}

TEST_F(GenerationTest, TheRunEndsWithItsWindow) {
    answer({cards({"One?"})});
    auto window = std::make_unique<GenerationModel>();
    window->setDesk(&rig.desk);
    open(rig.addPage("Long", {}, bodyOfParts(2)));
    window->start(&choices);
    server.waitForRequests(4);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->written() == 1; }));
    window.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(inDeck(), 1U);
}

}  // namespace
}  // namespace tessary
