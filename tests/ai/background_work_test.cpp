#include <gtest/gtest.h>

#include <latch>
#include <thread>

#include "ai/answer_grader.h"
#include "ai/flashcard_generator.h"
#include "generation_fixture.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/poppler/poppler_pdf_reader.h"
#include "study/study_fixture.h"

namespace tessary {
namespace {

using Phase = FlashcardGenerator::Phase;

const Date kNow = *parseIso8601("2026-11-21T09:30:00Z");

/// A generator on real stores and a real thread, with a provider that answers as scripted.
class FlashcardGeneratorTest : public StudyTest {
protected:
    FlashcardGeneratorTest() : StudyTest(kNow) {
        EXPECT_TRUE(files_.createFolders("/library"));
        JournalEntry page;
        page.title = "Cells";
        page.body = std::string(60, 'a') + "\n\n" + std::string(60, 'b');
        page_ = *library_.addPage(page);
        options_.request.kinds = {FlashcardKind::basic};
        options_.request.count = 10;
        script_.limit = 70;
        script_.cards = [](std::size_t call, const CardRequest&, std::stop_token) {
            return std::vector{basicCard("Question " + std::to_string(call))};
        };
        generator_ = std::make_unique<FlashcardGenerator>(page_, services());
    }

    GeneratorServices services() {
        return {.library = library_,
                .cards = cards_,
                .loop = loop_,
                .clock = clock_,
                .console = console_,
                .ports = {.pdfs = pdfs_, .thermal = heat_, .sleeper = sleeper_, .text = text_},
                .makeProvider = [this](const AISettings&, std::stop_token) -> AIResult<std::unique_ptr<AIProvider>> {
                    return std::make_unique<ScriptedProvider>(script_);
                }};
    }

    void runUntilOver() {
        while (generator_->isRunning()) {
            loop_.runReady();
            std::this_thread::yield();
        }
    }
    std::vector<std::string> fronts() const {
        std::vector<std::string> all;
        for (const Flashcard& card : cards_.cards()) all.push_back(card.front);
        return all;
    }

    IcuTextServices text_;
    PopplerPdfReader pdfs_;
    ScriptedHeat heat_;
    RecordingSleeper sleeper_;
    ProviderScript script_;
    JournalStore library_{{"/library"}, services_, queue_, StoreAccess::readWrite};
    FlashcardStore cards_{"/library/flashcards.json", services_, queue_, log_, StoreAccess::readWrite};
    PageId page_;
    GenerationOptions options_;
    std::unique_ptr<FlashcardGenerator> generator_;
};

TEST_F(FlashcardGeneratorTest, CardsAppearWhileTheRestIsWritten) {
    std::latch firstIsStored(1);
    script_.cards = [&](std::size_t call, const CardRequest&, std::stop_token) {
        if (call == 1) firstIsStored.wait();
        return std::vector{basicCard("Question " + std::to_string(call))};
    };
    const Subscription watching = generator_->changed.connect([&](const FlashcardGenerator::State& state) {
        if (state.cards.size() == 1 && !firstIsStored.try_wait()) firstIsStored.count_down();
    });
    ASSERT_TRUE(generator_->start(options_));
    EXPECT_FALSE(generator_->start(options_)) << "one run at a time";
    runUntilOver();
    const FlashcardGenerator::State& state = generator_->state();
    EXPECT_EQ(state.phase, Phase::done);
    EXPECT_EQ(state.text, "2 cards added");
    EXPECT_EQ(fronts(), (std::vector<std::string>{"Question 0", "Question 1"}));
    EXPECT_EQ(cards_.cards().find(state.cards[0])->pageID, page_);
    const JournalEntry& summary = *library_.entries().find(*state.summaryPage);
    EXPECT_EQ(summary.title, "Summary: Cells");
    EXPECT_EQ(summary.parentID, page_);
    EXPECT_EQ(summary.body, "In short.\n\n## Key points\n\n- A point\n\n## Glossary\n\n- **ATP**: Energy\n");

    script_.asked.clear();
    ASSERT_TRUE(generator_->start(options_));
    runUntilOver();
    EXPECT_EQ(generator_->state().text, "The AI couldn't write any cards.") << "the same fronts come twice";
    EXPECT_EQ(fronts().size(), 2U);
}

TEST_F(FlashcardGeneratorTest, CancellingKeepsWhatIsStored) {
    std::latch asked(1);
    script_.cards = [&](std::size_t call, const CardRequest&, std::stop_token stop) -> ProviderScript::Cards {
        if (call == 0) return std::vector{basicCard("Kept")};
        asked.count_down();
        std::latch stopped(1);
        const std::stop_callback wake(stop, [&] { stopped.count_down(); });
        stopped.wait();
        return std::unexpected(AIError::cancelled());
    };
    ASSERT_TRUE(generator_->start(options_));
    asked.wait();
    generator_->cancel();
    runUntilOver();
    EXPECT_EQ(generator_->state().phase, Phase::cancelled);
    EXPECT_EQ(generator_->state().text, "Generation cancelled");
    EXPECT_EQ(fronts(), std::vector<std::string>{"Kept"});
}

TEST_F(FlashcardGeneratorTest, NothingComesAfterItsEnd) {
    ASSERT_TRUE(generator_->start(options_));
    generator_.reset();  // in mid run
    loop_.runReady();
    EXPECT_TRUE(fronts().empty());
}

TEST_F(FlashcardGeneratorTest, APageThatIsDeletedGetsNoCards) {
    std::latch deleted(1);
    script_.cards = [&](std::size_t, const CardRequest&, std::stop_token) {
        deleted.wait();
        return std::vector{basicCard("Nobody wants me")};
    };
    ASSERT_TRUE(generator_->start(options_));
    ASSERT_TRUE(library_.deletePage(page_));
    deleted.count_down();
    runUntilOver();
    EXPECT_TRUE(fronts().empty());
    EXPECT_TRUE(library_.entries().empty()) << "no summary either";
    EXPECT_FALSE(generator_->start(options_));
}

TEST_F(FlashcardGeneratorTest, ReadsTheSettings) {
    ASSERT_TRUE(settings_.setText("flashcards.provider", "claude"));
    ASSERT_TRUE(settings_.setText("flashcards.kinds", "cloze, nonsense"));
    ASSERT_TRUE(settings_.setText("tessary.appLanguage", "de"));
    ASSERT_TRUE(settings_.setText("flashcards.lastSource", "highlights"));
    ASSERT_TRUE(settings_.setText("flashcards.lastAmount", "many"));
    const GenerationOptions chosen = generationOptions(settings_);
    EXPECT_EQ(chosen.settings.provider, AIProviderKind::claude);
    EXPECT_EQ(chosen.request.kinds, std::set{FlashcardKind::cloze});
    EXPECT_EQ(chosen.request.language, "German");
    EXPECT_EQ(chosen.source, SourceChoice::highlights);
    EXPECT_EQ(chosen.amount, CardAmount::many);
    EXPECT_TRUE(chosen.makeSummary);

    const std::vector<std::pair<std::string, std::string>> languages{
        {"fr", "French"}, {"Klingon", "Klingon"}, {"system", ""}, {"", "German"}};
    for (const auto& [setting, name] : languages) {
        ASSERT_TRUE(settings_.setText("flashcards.language", setting));
        EXPECT_EQ(readAISettings(settings_).language, name) << setting;
    }
    ASSERT_TRUE(settings_.setText("flashcards.provider", "nobody"));
    EXPECT_EQ(readAISettings(settings_).provider, AIProviderKind::apple);
}

// ---- grading ----

TEST(AnswerGraderTest, AnswersOnTheMainThreadOrNotAtAll) {
    class Grading final : public AIProvider {
    public:
        [[nodiscard]] std::size_t maxChunkCharacters() const override { return 1; }
        [[nodiscard]] AIResult<void> prepare(std::stop_token) override { return {}; }
        [[nodiscard]] AIResult<std::vector<GeneratedCard>> generateCards(std::string_view, const CardRequest&,
                                                                         const std::vector<std::string>&,
                                                                         std::stop_token) override {
            return {};
        }
        [[nodiscard]] AIResult<Summary> summarise(std::string_view, std::string_view, std::stop_token) override {
            return {};
        }
        [[nodiscard]] AIResult<AnswerGrade> grade(const GradeRequest& request, std::stop_token stop) override {
            std::latch stopped(1);
            const std::stop_callback wake(stop, [&] { stopped.count_down(); });
            if (request.answer == "hang") stopped.wait();
            if (request.answer == "throw") throw std::runtime_error("broken");
            return AnswerGrade{
                .verdict = AnswerGrade::Verdict::correct, .score = 1, .feedback = request.answer, .missing = {}};
        }
    };
    VirtualLoop loop;
    std::vector<std::string> results;
    AnswerGrader grader(loop, [](const AISettings& settings, std::stop_token) -> AIResult<std::unique_ptr<AIProvider>> {
        if (settings.provider == AIProviderKind::openai) return std::unexpected(AIError::missingKey(settings.provider));
        return std::make_unique<Grading>();
    });
    const auto ask = [&](const std::string& answer, AIProviderKind provider = AIProviderKind::ollama) {
        AISettings settings;
        settings.provider = provider;
        grader.grade(settings, {.question = "Q", .expected = "E", .answer = answer, .language = ""},
                     [&](const AIResult<AnswerGrade>& grade) {
                         results.push_back(grade ? grade->feedback : grade.error().text());
                     });
    };
    const auto waitFor = [&](std::size_t count) {
        while (results.size() < count) {
            loop.runReady();
            std::this_thread::yield();
        }
    };
    ask("fine");
    EXPECT_TRUE(results.empty()) << "never at once";
    waitFor(1);
    ask("hang");
    ask("other");  // the first one is given up
    waitFor(2);
    ask("hang");
    grader.cancel();
    waitFor(3);
    ask("throw");
    waitFor(4);
    ask("x", AIProviderKind::openai);
    waitFor(5);
    EXPECT_EQ(results, (std::vector<std::string>{"fine", "other", "Generation cancelled",
                                                 "The AI answered something unexpected: broken",
                                                 "Add your OpenAI API key in Settings → Flashcards"}));
}

}  // namespace
}  // namespace tessary
