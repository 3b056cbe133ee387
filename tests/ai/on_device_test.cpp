#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "ai/card_job.h"
#include "ai/providers_fixture.h"

namespace tessary {
namespace {

using Availability = OnDeviceModel::Availability;
using Failure = OnDeviceFailure::Kind;

/// Answers as it is told, and keeps what it was asked.
class ScriptedModel final : public OnDeviceModel {
public:
    struct Call {
        std::string instructions;
        std::string prompt;
        GuidedShape shape;
    };

    [[nodiscard]] Availability availability() const override { return state; }
    void warmUp() override { ++warmUps; }
    [[nodiscard]] std::expected<std::string, OnDeviceFailure> respond(std::string_view instructions,
                                                                      std::string_view prompt, const GuidedShape& shape,
                                                                      std::stop_token stop) override {
        calls.push_back({std::string(instructions), std::string(prompt), shape});
        if (stop.stop_requested()) return std::unexpected(OnDeviceFailure{Failure::cancelled, "stopped"});
        return answer;
    }

    Availability state = Availability::available;
    std::expected<std::string, OnDeviceFailure> answer;
    int warmUps = 0;
    std::vector<Call> calls;
};

class OnDeviceTest : public ::testing::Test {
protected:
    OnDeviceTest() {
        rig_.onDevice = &model_;
        provider_ = rig_.make(AISettings());
    }

    AIResult<std::vector<GeneratedCard>> cards(std::string_view source = "Text") {
        return provider_->generateCards(source, request_, {"Old?"}, {});
    }

    const CardRequest request_{.kinds = {FlashcardKind::basic, FlashcardKind::cloze, FlashcardKind::multipleChoice},
                               .count = 5,
                               .language = "",
                               .focus = {}};
    ScriptedModel model_;
    ProviderRig rig_;
    std::unique_ptr<AIProvider> provider_;
};

/// "Name{field type …}", with what stands inside a field in parentheses.
std::string described(const std::vector<GuidedField>& fields) {
    constexpr std::array kTypes{"text", "number", "integer", "choice", "texts", "objects"};
    std::string text;
    for (const GuidedField& field : fields) {
        text += (text.empty() ? "" : ", ") + field.name + " " + kTypes.at(static_cast<std::size_t>(field.type));
        for (const std::string& choice : field.choices) text += " " + choice;
        if (!field.fields.empty()) text += " (" + described(field.fields) + ")";
    }
    return text;
}

TEST_F(OnDeviceTest, SaysWhyItCannotBeUsed) {
    const struct {
        Availability state;
        const char* text;
    } cases[] = {
        {Availability::available, ""},
        {Availability::deviceNotEligible, "Apple Intelligence isn't available on this Mac"},
        {Availability::notEnabled, "Turn on Apple Intelligence in System Settings"},
        {Availability::notReady, "Apple Intelligence is still getting ready, try again soon"},
        {Availability::other, "Apple Intelligence isn't available"},
    };
    model_.answer = R"({"cards":[]})";
    for (const auto& [state, text] : cases) {
        model_.state = state;
        EXPECT_EQ(textOfError(provider_->prepare({})), text);
        EXPECT_EQ(textOfError(cards()), text);
    }
    EXPECT_EQ(model_.warmUps, 1);
    EXPECT_EQ(model_.calls.size(), 1U);
}

TEST_F(OnDeviceTest, SaysWhyItDidNotAnswer) {
    const std::string_view refusals[] = {"the on-device model declined to write cards about this text",
                                         "the on-device model declined to summarise this text",
                                         "the on-device model declined to grade this answer"};
    const struct {
        Failure failure;
        std::string text;  ///< empty for the refusal of each
    } cases[] = {
        {Failure::refused, ""},
        {Failure::cancelled, "Generation cancelled"},
        {Failure::contextExceeded, "there's too much text for the on-device model"},
        {Failure::unsupportedLanguage, "Apple Intelligence doesn't support this language yet"},
        {Failure::other, "The AI answered something unexpected: odd"},
    };
    for (const auto& [failure, text] : cases) {
        model_.answer = std::unexpected(OnDeviceFailure{failure, "odd"});
        EXPECT_EQ(textOfError(cards()), text.empty() ? refusals[0] : text);
        EXPECT_EQ(textOfError(provider_->summarise("Text", "", {})), text.empty() ? refusals[1] : text);
        EXPECT_EQ(textOfError(provider_->grade(smallRequest(), {})), text.empty() ? refusals[2] : text);
    }
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(errorIn(provider_->grade(smallRequest(), stop.get_token())), AIError::cancelled());
}

TEST_F(OnDeviceTest, GuidesTheModelAndReadsItsDrafts) {
    model_.answer = R"({"cards":[{"kind":"multipleChoice","front":"2 + 2?","back":"4","options":["3","4","5","6"],)"
                    R"("correctIndex":1,"explanation":"","page":2}]})";
    const AIResult<std::vector<GeneratedCard>> cards = this->cards();
    ASSERT_TRUE(cards) << cards.error().text();
    EXPECT_EQ(*cards, (std::vector{GeneratedCard{.kind = FlashcardKind::multipleChoice,
                                                 .front = "2 + 2?",
                                                 .back = "4",
                                                 .options = {"3", "4", "5", "6"},
                                                 .correctIndex = 1,
                                                 .explanation = {},
                                                 .sourcePage = 2}}));
    model_.answer = R"({"summary":"Sums.","keyPoints":["Add"],"glossary":[{"term":"sum","definition":"Result."}]})";
    const AIResult<Summary> summary = provider_->summarise("Text", "", {});
    ASSERT_TRUE(summary) << summary.error().text();
    EXPECT_EQ(*summary, (Summary{.text = "Sums.", .keyPoints = {"Add"}, .glossary = {{"sum", "Result."}}}));
    model_.answer = kGradeReply;
    const AIResult<AnswerGrade> grade = provider_->grade(smallRequest(), {});
    ASSERT_TRUE(grade) << grade.error().text();
    EXPECT_EQ(*grade, gradeOfReply());

    const JSONJob jobs[] = {cardJob("Text", request_, {"Old?"}), summaryJob("Text", ""), gradeJob(smallRequest())};
    ASSERT_EQ(model_.calls.size(), std::size(jobs));
    for (std::size_t i = 0; i < std::size(jobs); ++i) {
        EXPECT_EQ(model_.calls[i].instructions, jobs[i].system);
        EXPECT_EQ(model_.calls[i].prompt, jobs[i].user);
    }
    const auto shape = [&](std::size_t i) {
        return model_.calls[i].shape.name + ": " + described(model_.calls[i].shape.fields);
    };
    EXPECT_EQ(shape(0),
              "AICardBatch: cards objects (kind choice basic cloze multipleChoice, front text, back text, "
              "options texts, correctIndex integer, explanation text, page integer)");
    EXPECT_EQ(shape(1), "AISummaryDraft: summary text, keyPoints texts, glossary objects (term text, definition text)");
    EXPECT_EQ(shape(2),
              "AIGradeDraft: verdict choice correct partial wrong, score number, feedback text, missing texts");
}

TEST_F(OnDeviceTest, CutsWhatItIsGiven) {
    const std::string pair = "e\u0301";  // one character of three bytes
    std::string text;
    for (int i = 0; i < 5000; ++i) text += pair;
    model_.answer = R"({"summary":"S","cards":[],"verdict":"wrong"})";
    EXPECT_TRUE(provider_->summarise(text, "", {}));
    EXPECT_EQ(model_.calls.back().prompt, text.substr(0, 4500 * pair.size()));
    EXPECT_TRUE(provider_->grade({.question = "q", .expected = "e", .answer = text, .language = ""}, {}));
    EXPECT_TRUE(model_.calls.back().prompt.starts_with("Question: q\nExpected answer: e\nStudent's answer: e"));
    EXPECT_EQ(rig_.text.characterCount(model_.calls.back().prompt), 4500U);
    EXPECT_EQ(provider_->maxChunkCharacters(), 4500U);
}

}  // namespace
}  // namespace tessary
