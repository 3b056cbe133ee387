#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ai/card_job.h"
#include "ai/grade_job.h"
#include "ai/providers_fixture.h"

namespace tessary {
namespace {

constexpr auto kBasic = FlashcardKind::basic;
constexpr auto kCloze = FlashcardKind::cloze;
constexpr auto kChoice = FlashcardKind::multipleChoice;
const std::set<FlashcardKind> kAll{kBasic, kCloze, kChoice};

AIResult<std::vector<GeneratedCard>> decoded(const std::string& reply, const std::set<FlashcardKind>& kinds = kAll) {
    static const IcuTextServices text;
    return decodeCards(reply, {.kinds = kinds, .count = 9, .language = "", .focus = {}}, text);
}

/// The cards of a reply with one card in it, of members without braces.
std::vector<GeneratedCard> cardsOf(const std::string& members) {
    const auto cards = decoded(R"({"cards":[{)" + members + "}]}");
    EXPECT_TRUE(cards) << members << ": " << cards.error().text();
    return cards.value_or(std::vector<GeneratedCard>{});
}

/// "front | back", then the options of a choice with a star at the right one; empty for a card that was left out.
std::string shown(const std::string& members) {
    std::string text;
    for (const GeneratedCard& card : cardsOf(members)) {
        EXPECT_FALSE(contentProblem(card)) << members;
        text += card.front + " | " + card.back;
        for (std::size_t i = 0; i < card.options.size(); ++i) {
            text += (i == 0 ? " | " : " ") + card.options[i];
            if (std::cmp_equal(i, card.correctIndex.value_or(-1))) text += '*';
        }
    }
    return text;
}

std::string fenced(const std::string& json) { return "Here you are:\n```json\n" + json + "\n```\nGood luck!"; }

TEST(CardReplyTest, KnowsKindsByManyNames) {
    const std::map<FlashcardKind, std::vector<std::string>> names{
        {kBasic, {"\"basic\"", "\"riddle\"", "\"\"", "null", "7", "[\"cloze\"]"}},
        {kCloze, {"\"cloze\"", "\"Cloze Deletion\"", "\"fill in the blank\"", "\"Fill-In-The-Blank\""}},
        {kChoice, {"\"multiple_choice\"", "\"multipleChoice\"", "\"Multiple Choice\"", "\"MCQ\""}}};
    for (const auto& [kind, namesOfKind] : names) {
        for (const std::string& name : namesOfKind) {
            const std::string members = R"("front":"{{a}} b","back":"x","options":["x","y"],"correct_index":0,"kind":)";
            for (const FlashcardKind wanted : kAll) {
                const auto cards = decoded(R"({"cards":[{)" + members + name + "}]}", {wanted});
                ASSERT_TRUE(cards) << name;
                EXPECT_EQ(cards->size(), wanted == kind ? 1U : 0U) << name;
            }
        }
    }
}

TEST(CardReplyTest, RepairsCardsOrLeavesThemOut) {
    const struct {
        std::string members;
        std::string card;
    } cases[] = {
        {R"("kind":"basic","front":" f\n","back":"\tb ")", "f | b"},
        {R"("front":"f","back":42)", "f | 42"},
        {R"("front":1e3,"back":true)", "1000 | true"},
        {R"("front":"f","back":"")", ""},
        {R"("front":" ","back":"b")", ""},
        {R"("front":"f")", ""},
        {R"("front":"f","back":["b"])", ""},
        {R"("front":null,"back":{})", ""},
        {R"("front":"f","back":"b","options":["x","y"],"correct_index":0)", "f | b"},
        {R"("kind":"cloze","front":"A {{b}} and {{c d}}.","back":"")", "A {{b}} and {{c d}}. | b · c d"},
        {R"("kind":"cloze","front":"A {{b}}.","options":["x"])", "A {{b}}. | b"},
        {R"("kind":"cloze","front":"A b.","back":"b")", ""},
        {R"("kind":"cloze","front":"A {{}} {{b","back":"b")", ""},
    };
    for (const auto& [members, card] : cases) EXPECT_EQ(shown(members), card) << members;
}

TEST(CardReplyTest, FindsTheRightOption) {
    const struct {
        std::string members;
        std::string card;
    } cases[] = {
        {R"("options":["a","b"],"correct_index":1)", "q | b | a b*"},
        {R"("options":["a","b"],"correctIndex":1)", "q | b | a b*"},
        {R"("options":["a","b"],"correct_index":null,"correctIndex":1)", "q | b | a b*"},
        {R"("options":["a","b"],"correct_index":1.0)", "q | b | a b*"},
        {R"("options":["a","b","c"],"correct_index":" 2 ")", "q | c | a b c*"},
        {R"("options":["a","b"],"correct_index":1.5)", ""},
        {R"("options":["a","b"],"correct_index":"b")", ""},
        {R"("options":["a","b"],"correct_index":null)", ""},
        {R"("options":["a","b"],"correct_index":null,"back":"B")", "q | b | a b*"},
        {R"("options":["Á","b"],"correct_index":7,"back":"a")", "q | Á | Á* b"},
        {R"("options":["a","b"],"correct_index":-1,"back":"b")", "q | b | a b*"},
        {R"("options":["a","b"],"correct_index":1e300,"back":"c")", ""},
        {R"("options":["a","b"],"correct_index":2)", ""},
        {R"("options":["a","b"],"correct_index":0,"back":"")", "q | a | a* b"},
        {R"("options":["a","b"],"correct_index":0,"back":"none of them")", "q | a | a* b"},
        {R"("options":["a"],"correct_index":0)", ""},
        {R"("options":[],"correct_index":0,"back":"a")", ""},
        {R"("options":"a, b","correct_index":0)", ""},
        {R"("correct_index":0,"back":"a")", ""},
        {R"("options":["a","A "," a"],"correct_index":1)", ""},
        {R"("options":["","a",null,"b","c"],"correct_index":3)", "q | b | a b* c"},
        {R"("options":["a","a","b"],"correct_index":2)", "q | b | a b*"},
        {R"("options":["a","b","a"],"correct_index":2)", "q | a | a* b"},
        {R"("options":["a",""],"correct_index":1)", ""},
        {R"("options":["a","","b"],"correct_index":1)", ""},
        {R"("options":[3,4,5.5],"correct_index":1)", "q | 4 | 3 4* 5.5"},
        {R"("options":[["x"],"a",{},"b"],"correct_index":1)", "q | a | a* b"},
    };
    for (const auto& [members, card] : cases) {
        EXPECT_EQ(shown(R"("kind":"mcq","front":"q",)" + members), card) << members;
    }
}

TEST(CardReplyTest, KeepsPageAndExplanation) {
    const struct {
        std::string page;
        std::optional<std::int64_t> number;
    } cases[] = {{"12", 12}, {"\"12\"", 12}, {"12.0", 12}, {"null", {}}, {"\"p. 12\"", {}}, {"1.5", {}}, {"1e99", {}}};
    for (const auto& [page, number] : cases) {
        const auto cards = cardsOf(R"("front":"f","back":"b","explanation":" why ","page":)" + page);
        ASSERT_EQ(cards.size(), 1U);
        EXPECT_EQ(cards.front().sourcePage, number) << page;
        EXPECT_EQ(cards.front().explanation, "why");
    }
    EXPECT_EQ(cardsOf(R"("front":"f","back":"b","explanation":" ")").front().explanation, std::nullopt);
}

TEST(CardReplyTest, TakesAnObjectOutOfWhateverIsAroundIt) {
    const std::string json = R"({"cards":[{"kind":"basic","front":"f","back":"b"},5,null,[],{}],"note":"x"})";
    for (const std::string& reply : {json, "\n\t" + json + "\r\n", "\xEF\xBB\xBF" + json, fenced(json),
                                     "```\n" + json + "```", "Sure! " + json + " Anything else?"}) {
        const auto cards = decoded(reply);
        ASSERT_TRUE(cards) << reply;
        EXPECT_EQ(cards->size(), 1U) << reply;
    }
    for (const char* reply :
         {R"({"cards":[]})", "{}", R"({"cards":null})", R"({"cards":{"front":"f"}})", R"({"cards":"none"})"}) {
        const auto cards = decoded(reply);
        ASSERT_TRUE(cards) << reply;
        EXPECT_TRUE(cards->empty()) << reply;
    }
}

TEST(ReplyTest, WhatIsNoObjectIsRefused) {
    const auto refusals = [](const std::string& reply) {
        const AIError cards = errorIn(decoded(reply));
        const AIError summary = errorIn(decodeSummary(reply));
        const AIError grade = errorIn(decodeGrade(reply));
        for (const AIError& error : {cards, summary, grade}) EXPECT_EQ(error.kind, AIError::Kind::badResponse);
        return std::vector{cards.detail, summary.detail, grade.detail};
    };
    const std::vector<std::string> noJson(3, "it didn't return valid JSON");
    std::string garbage;
    for (unsigned i = 0; garbage.size() < 1'000'000; ++i) garbage += static_cast<char>(i * i % 251);
    const std::string deep(100'000, '[');
    for (const std::string& reply :
         {std::string(), std::string(" \n"), std::string("I can't."), std::string("}{"), std::string("{\"cards\":["),
          std::string("{\"a\":\"\xC3\"}"), std::string("{'cards':[]}"), std::string("{} and {}"), garbage,
          "{" + garbage + "}", deep, deep + std::string(deep.size(), ']'), "{\"cards\":" + deep + "}",
          std::string("{\0}", 3)}) {
        EXPECT_EQ(refusals(reply), noJson) << reply.substr(0, 40);
    }
    for (const char* reply : {"[]", R"([{"cards":[]}])", "5", "\"text\"", "null", "true"}) {
        EXPECT_EQ(refusals(reply),
                  (std::vector<std::string>{"the cards weren't an object", "the summary wasn't an object",
                                            "the grade wasn't an object"}))
            << reply;
    }
}

TEST(SummaryReplyTest, ReadsWhatThereIs) {
    const std::string full =
        R"({"summary":" One.\n\nTwo. ","key_points":["a"," ",3,null],"glossary":[{"term":"t","definition":"d"},)"
        R"({"word":"w","definition":"e"},{"term":"","word":"x","definition":"y"},{"term":"lost"},{"definition":"z"},)"
        R"("s",{"term":4,"definition":5}]})";
    const Summary whole{
        .text = "One.\n\nTwo.", .keyPoints = {"a", "3"}, .glossary = {{"t", "d"}, {"w", "e"}, {"x", "y"}, {"4", "5"}}};
    const struct {
        std::string reply;
        Summary summary;
    } cases[] = {
        {full, whole},
        {fenced(full), whole},
        {R"({"summary":"s"})", {"s", {}, {}}},
        {R"({"summary":"s","keyPoints":["k"],"glossary":{}})", {"s", {"k"}, {}}},
        {R"({"summary":"s","key_points":"k","keyPoints":7,"glossary":"g"})", {"s", {}, {}}},
    };
    for (const auto& [reply, summary] : cases) {
        const AIResult<Summary> read = decodeSummary(reply);
        ASSERT_TRUE(read) << reply;
        EXPECT_EQ(*read, summary) << reply;
    }
    for (const char* reply : {"{}", R"({"summary":""})", R"({"summary":" \n","key_points":["a"]})",
                              R"({"summary":null})", R"({"summary":["s"]})"}) {
        EXPECT_EQ(errorIn(decodeSummary(reply)).detail, "the summary was empty") << reply;
    }
}

TEST(GradeReplyTest, ReadsVerdictAndScore) {
    using enum AnswerGrade::Verdict;
    const struct {
        std::string members;
        AnswerGrade::Verdict verdict;
        double score;
    } cases[] = {
        {R"("verdict":"correct","score":0.9)", correct, 0.9},
        {R"("verdict":"PARTIAL","score":0.4)", partial, 0.4},
        {R"("verdict":" Wrong ","score":0)", wrong, 0},
        {R"("verdict":"Incorrect","score":0.1)", wrong, 0.1},
        {R"("verdict":"correct")", correct, 1},
        {R"("verdict":"partial","score":null)", partial, 0.5},
        {R"("verdict":"wrong","score":[1])", wrong, 0},
        {R"("verdict":"correct","score":"NaN")", correct, 1},
        {R"("verdict":"partial","score":"inf")", partial, 0.5},
        {R"("verdict":"partial","score":"0.6")", partial, 0.6},
        {R"("verdict":"correct","score":100)", correct, 1},
        {R"("verdict":"wrong","score":-1e300)", wrong, 0},
        {R"("verdict":"partial","score":"half")", partial, 0.5},
    };
    for (const auto& [members, verdict, score] : cases) {
        const AIResult<AnswerGrade> grade = decodeGrade(fenced("{" + members + R"(,"missing":["m",2,""]})"));
        ASSERT_TRUE(grade) << members;
        EXPECT_EQ(*grade, (AnswerGrade{.verdict = verdict, .score = score, .feedback = "", .missing = {"m", "2"}}))
            << members;
    }
    EXPECT_EQ(decodeGrade(R"({"verdict":"wrong","feedback":" No. ","missing":"all"})"),
              (AnswerGrade{.verdict = wrong, .score = 0, .feedback = "No.", .missing = {}}));
    for (const char* reply : {"{}", R"({"verdict":""})", R"({"verdict":"maybe"})", R"({"verdict":null,"score":1})",
                              R"({"verdict":1})", R"({"verdict":["correct"]})"}) {
        EXPECT_EQ(errorIn(decodeGrade(reply)).detail, "no verdict") << reply;
    }
}

}  // namespace
}  // namespace tessary
