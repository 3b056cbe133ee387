#include <gtest/gtest.h>

#include "ai/generation_run.h"
#include "generation_fixture.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/poppler/poppler_pdf_reader.h"

namespace tessary {
namespace {

using End = GenerationOutcome::End;
using Phase = GenerationProgress::Phase;

class Listener final : public GenerationListener {
public:
    void progressed(const GenerationProgress& progress) override {
        EXPECT_GE(progress.fraction, fraction) << "a bar that goes back";
        fraction = progress.fraction;
        texts.push_back(progress.text);
    }
    void wrote(std::vector<GeneratedCard> written) override {
        EXPECT_FALSE(written.empty());
        for (GeneratedCard& card : written) cards.push_back(std::move(card));
        if (onCards) onCards();
    }
    void summarised(Summary written) override { summary = std::move(written); }
    void noted(std::string line) override { lines.push_back(std::move(line)); }

    std::vector<std::string> fronts() const {
        std::vector<std::string> all;
        for (const GeneratedCard& card : cards) all.push_back(card.front);
        return all;
    }

    double fraction = 0;
    std::vector<std::string> texts;
    std::vector<std::string> lines;
    std::vector<GeneratedCard> cards;
    std::optional<Summary> summary;
    std::function<void()> onCards;
};

class GenerationRunTest : public testing::Test {
protected:
    GenerationRunTest() {
        plan.page.body = "Cells make ATP.";
        plan.request.kinds = {FlashcardKind::basic};
        plan.request.count = 10;
        plan.makeSummary = false;
        script.cards = [](std::size_t call, const CardRequest&, std::stop_token) {
            return std::vector{basicCard("Question " + std::to_string(call))};
        };
    }

    /// A source that makes this many chunks.
    void cutInto(std::size_t parts) {
        plan.page.body.clear();
        for (std::size_t i = 0; i < parts; ++i) plan.page.body += std::string(60, static_cast<char>('a' + i)) + "\n\n";
        script.limit = 70;
    }

    GenerationOutcome run() {
        return runGeneration(
            plan,
            [this](std::stop_token) -> AIResult<std::unique_ptr<AIProvider>> {
                return std::make_unique<ScriptedProvider>(script);
            },
            {.pdfs = pdfs_, .thermal = heat, .sleeper = sleeper, .text = text_}, listener, stop.get_token());
    }

    /// Calls that fail, by number; the others give a card.
    void failOn(std::map<std::size_t, AIError> failures) {
        script.cards = [failures = std::move(failures)](std::size_t call, const CardRequest&,
                                                        std::stop_token) -> ProviderScript::Cards {
            if (const auto found = failures.find(call); found != failures.end()) return std::unexpected(found->second);
            return std::vector{basicCard("Question " + std::to_string(call))};
        };
    }

    GenerationPlan plan;
    ProviderScript script;
    Listener listener;
    ScriptedHeat heat;
    RecordingSleeper sleeper;
    std::stop_source stop;
    IcuTextServices text_;

private:
    PopplerPdfReader pdfs_;
};

const AIError kBusy = AIError::unavailable("Claude is busy, try again in a minute");

TEST_F(GenerationRunTest, FromReadingToTheSummary) {
    plan.page = {.body = "", .pdfs = {std::filesystem::path(TESSARY_FIXTURES) / "pdf" / "plain.pdf"}};
    plan.makeSummary = true;
    plan.existingFronts = {"Old one"};
    script.limit = 100;
    script.cards = [](std::size_t call, const CardRequest&, std::stop_token) {
        return call == 0 ? std::vector{basicCard("First", 1), basicCard("Made up", 9)}
                         : std::vector{basicCard("Second", 2)};
    };
    EXPECT_EQ(run(), (GenerationOutcome{.text = "3 cards added", .cardsAdded = 3, .problems = {}}));
    EXPECT_EQ(listener.texts,
              (std::vector<std::string>{"Reading page 1 of 2", "Reading page 2 of 2", "Writing cards — part 1 of 2",
                                        "Writing cards — part 2 of 2", "Summarising…"}));
    ASSERT_EQ(script.asked.size(), 2U);
    EXPECT_TRUE(script.asked[0].source.starts_with(
        "[Page 1] Respiration of the cell ATP is made by oxidative phosphorylation"));
    EXPECT_EQ(script.asked[0].existing, std::vector<std::string>{"Old one"});
    EXPECT_EQ(script.asked[1].existing, (std::vector<std::string>{"Old one", "First", "Made up"}));
    EXPECT_EQ(script.asked[0].request.count + script.asked[1].request.count, 10);
    EXPECT_EQ(listener.cards[0].sourcePage, 1);
    EXPECT_EQ(listener.cards[1].sourcePage, 1) << "the only page of its part";
    ASSERT_EQ(script.summarised.size(), 1U);
    EXPECT_EQ(text_.characterCount(script.summarised[0]), 100U) << "cut to what the provider takes";
    EXPECT_EQ(listener.summary->text, "In short.");
}

TEST_F(GenerationRunTest, OnlyNewCardsAndNoMoreThanWanted) {
    plan.existingFronts = {"What is ATP?"};
    plan.request.count = 3;
    script.cards = [](std::size_t, const CardRequest&, std::stop_token) {
        return std::vector{basicCard("WHAT  is “ATP”"), basicCard("Où?"),        basicCard("ou?"),
                           basicCard("What is -5?"),    basicCard("What is 5?"), basicCard("Too many?")};
    };
    EXPECT_EQ(run(), (GenerationOutcome{.text = "3 cards added", .cardsAdded = 3, .problems = {}, .duplicates = 2}));
    EXPECT_EQ(listener.fronts(), (std::vector<std::string>{"Où?", "What is -5?", "What is 5?"}));
}

TEST_F(GenerationRunTest, AChunkThatFailsIsTriedOnceMore) {
    cutInto(3);
    AIError late = kBusy;
    late.retryAfter = 37;
    failOn({{0, AIError::network("gone")}, {2, late}, {3, late}});
    const GenerationOutcome outcome = run();
    EXPECT_EQ(outcome.end, End::done);
    EXPECT_EQ(outcome.text, "2 cards added");
    EXPECT_EQ(outcome.problems,
              std::vector<std::string>{"Part 2 of 3 has no cards: Claude is busy, try again in a minute"});
    EXPECT_EQ(listener.lines,
              std::vector<std::string>{"Notara: cards of part 2 of 3 failed — Claude is busy, try again "
                                       "in a minute (asked to wait 37 s)"});
    EXPECT_EQ(listener.texts, (std::vector<std::string>{"Writing cards — part 1 of 3", "Retrying part 1 of 3",
                                                        "Writing cards — part 2 of 3", "Retrying part 2 of 3",
                                                        "Writing cards — part 3 of 3"}));
    EXPECT_TRUE(sleeper.slept.empty()) << "at once";
}

TEST_F(GenerationRunTest, HowARunFails) {
    struct Case {
        std::string name;
        std::map<std::size_t, AIError> failures;
        std::string text;
        std::size_t calls;
        std::size_t cards;
    };
    const AIError rejected = AIError::rejectedKey(AIProviderKind::claude);
    const AIError bad = AIError::badResponse("it didn't return valid JSON");
    const std::vector<Case> table{
        {"every part", {{0, kBusy}, {1, bad}, {2, kBusy}, {3, bad}}, bad.text(), 4, 0},
        {"a rejected key", {{0, rejected}}, "Your Claude API key was rejected", 1, 0},
        {"a missing key",
         {{0, AIError::missingKey(AIProviderKind::gemini)}},
         "Add your Google Gemini API key in Settings → Flashcards",
         1,
         0},
        {"cancelled by the provider", {{0, AIError::cancelled()}}, "Generation cancelled", 1, 0},
        {"a key that was rejected later", {{1, rejected}}, "1 card added", 2, 1},
    };
    for (const Case& each : table) {
        cutInto(2);
        script.asked.clear();
        listener = {};
        failOn(each.failures);
        const GenerationOutcome outcome = run();
        EXPECT_EQ(outcome.text, each.text) << each.name;
        EXPECT_EQ(outcome.providerFailed, outcome.end == End::failed) << each.name;
        EXPECT_EQ(script.asked.size(), each.calls) << each.name;
        EXPECT_EQ(outcome.cardsAdded, each.cards) << each.name;
        EXPECT_EQ(listener.cards.size(), each.cards) << each.name;
    }
}

TEST_F(GenerationRunTest, NothingWrittenNothingToRead) {
    script.cards = [](std::size_t, const CardRequest&, std::stop_token) { return std::vector<GeneratedCard>{}; };
    EXPECT_EQ(run().text, "The AI couldn't write any cards.");
    EXPECT_EQ(script.asked.size(), 1U) << "an answer without cards is no failure";
    plan.page.body = " \x01\n ";
    EXPECT_EQ(run(), (GenerationOutcome{.end = End::failed, .text = "This page has no text yet.", .problems = {}}));
    script.ready = std::unexpected(AIError::unavailable("Ollama isn't running at http://h"));
    EXPECT_EQ(
        run(),
        (GenerationOutcome{
            .end = End::failed, .text = "Ollama isn't running at http://h", .problems = {}, .providerFailed = true}));
    EXPECT_EQ(script.asked.size(), 1U);
}

TEST_F(GenerationRunTest, ASummaryThatFailsLeavesTheCards) {
    plan.makeSummary = true;
    script.summary = [](std::stop_token) { return std::unexpected(AIError::badResponse("the summary was empty")); };
    const GenerationOutcome outcome = run();
    EXPECT_EQ(outcome.end, End::done);
    EXPECT_EQ(outcome.text, "Cards ready — the summary couldn't be written");
    EXPECT_EQ(outcome.cardsAdded, 1U);
    EXPECT_EQ(outcome.problems,
              std::vector<std::string>{"The AI answered something unexpected: the summary was empty"});
}

TEST_F(GenerationRunTest, PausesWhileTheMachineIsWarm) {
    cutInto(3);
    heat.levels = {ThermalLevel::serious, ThermalLevel::critical, ThermalLevel::fair, ThermalLevel::nominal};
    EXPECT_EQ(run().end, End::done);
    EXPECT_EQ(sleeper.slept, (std::vector<double>{5, 5}));
    const std::string warm = "Your Mac is warm — pausing to let it cool…";
    EXPECT_EQ(listener.texts, (std::vector<std::string>{"Writing cards — part 1 of 3", warm, warm,
                                                        "Writing cards — part 2 of 3", "Writing cards — part 3 of 3"}));

    heat.levels = {ThermalLevel::critical};
    sleeper.slept.clear();
    listener = Listener();
    EXPECT_EQ(run().end, End::done) << "it goes on in the end";
    EXPECT_EQ(sleeper.slept.size(), 2 * 36U);

    heat.levels = {ThermalLevel::nominal};
    sleeper.slept.clear();
    listener = Listener();
    plan.gentle = true;
    EXPECT_EQ(run().end, End::done);
    EXPECT_EQ(sleeper.slept, (std::vector<double>{5, 5})) << "between the parts";
}

TEST_F(GenerationRunTest, CancelledAtEveryStage) {
    plan.makeSummary = true;
    const auto stopNow = [this] { stop.request_stop(); };
    const auto stopsIn = [&](const std::string& stage, std::size_t kept) {
        const GenerationOutcome outcome = run();
        EXPECT_EQ(outcome.end, End::cancelled) << stage;
        EXPECT_EQ(outcome.text, "Generation cancelled") << stage;
        EXPECT_EQ(outcome.cardsAdded, kept) << stage;
        EXPECT_EQ(listener.cards.size(), kept) << stage;
        EXPECT_FALSE(listener.summary) << stage;
        stop = std::stop_source();
        listener = Listener();
        script.asked.clear();
    };
    cutInto(3);
    stop.request_stop();
    stopsIn("before it began", 0);
    listener.onCards = stopNow;
    stopsIn("after the first part", 1);
    script.cards = [&](std::size_t, const CardRequest&, std::stop_token) -> ProviderScript::Cards {
        stopNow();
        return std::unexpected(AIError::network("the connection was closed"));
    };
    stopsIn("in a request", 0);
    script.cards = [&](std::size_t, const CardRequest&, std::stop_token) {
        stopNow();
        return std::vector{basicCard("Too late")};
    };
    stopsIn("as an answer came", 0);
    script.cards = [](std::size_t call, const CardRequest&, std::stop_token) {
        return std::vector{basicCard("Question " + std::to_string(call))};
    };
    script.summary = [&](std::stop_token) -> AIResult<Summary> {
        stopNow();
        return Summary{.text = "Too late", .keyPoints = {}, .glossary = {}};
    };
    stopsIn("in the summary", 3);
}

TEST(CardCountTest, GrowsWithTheSource) {
    const auto pages = [](int count) {
        SourceChunk chunk{.text = std::string(100, 'x'), .pages = {}};
        for (int page = 1; page <= count; ++page) chunk.pages.insert(page);
        return std::vector{chunk};
    };
    const std::vector<SourceChunk> text{{.text = std::string(18000, 'x'), .pages = {}}};
    EXPECT_EQ(cardCountFor(pages(1), CardAmount::normal, 1.5, 60), 5);
    EXPECT_EQ(cardCountFor(pages(10), CardAmount::normal, 1.5, 60), 15);
    EXPECT_EQ(cardCountFor(pages(10), CardAmount::many, 1.5, 60), 30);
    EXPECT_EQ(cardCountFor(pages(500), CardAmount::normal, 1.5, 60), 60);
    EXPECT_EQ(cardCountFor(text, CardAmount::normal, 2, 60), 20);
    const std::vector<SourceChunk> onePageInTwo{{.text = "x", .pages = {7}}, {.text = "y", .pages = {7, 8}}};
    EXPECT_EQ(cardCountFor(onePageInTwo, CardAmount::normal, 10, 60), 20);
    EXPECT_EQ(cardCountFor(pages(10), CardAmount::normal, 1.5, 3), 3);
}

}  // namespace
}  // namespace tessary
