#include "study/note_cards.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs pairsIn(std::string_view text) {
    Pairs pairs;
    for (const auto& card : cardsInText(text)) pairs.emplace_back(card.front, card.back);
    return pairs;
}

TEST(NoteCardsTest, AnswerLines) {
    EXPECT_EQ(pairsIn("> - [ ] Capital of France :: Paris\n## a :: b\nstd::vector is fine\nx :: \n"),
              (Pairs{{"Capital of France", "Paris"}, {"a", "b"}}));
}

TEST(NoteCardsTest, QuestionPairs) {
    EXPECT_EQ(pairsIn("q: What?\nA: This\nand that\nQ: More?\na: Yes\n\nno more\nQ: lonely\n\nA: late"),
              (Pairs{{"What?", "This\nand that"}, {"More?", "Yes"}}));
}

TEST(NoteCardsTest, SentencesWithTerms) {
    EXPECT_EQ(pairsIn("First, e.g. this. Pi is ==3.14== and e\nis {{2.71}}, i.e. Euler's number! Last one."),
              (Pairs{{"Pi is {{3.14}} and e is {{2.71}}, i.e. Euler's number!", "3.14 · 2.71"}}));
    EXPECT_EQ(pairsIn("- one {{a}}\n- two {{b. C}} x"), (Pairs{{"one {{a}}", "a"}, {"two {{b. C}} x", "b. C"}}));
    EXPECT_EQ(pairsIn("if a == b and c == d, {{ no }} === no ==="), Pairs{});
    EXPECT_EQ(cardsInText("a {{b}}").at(0).kind, FlashcardKind::cloze);
}

TEST(NoteCardsTest, CodeHoldsNoCards) {
    EXPECT_EQ(pairsIn("```\na :: b\n~~~\n```\n"
                      "~~~~ text\n{{x}}\n~~~\nc :: d\n~~~~\n`e :: f` and `{{g}}` ``==`h==``"),
              Pairs{});
    EXPECT_EQ(pairsIn("`a :: b` :: c"), (Pairs{{"`a :: b`", "c"}}));
}

TEST(NoteCardsTest, TheFirstOfEqualQuestionsWins) {
    EXPECT_EQ(pairsIn("a :: b\na :: c\n\n{{x}} is y.\n\n{{z}} is y."), (Pairs{{"a", "b"}, {"{{x}} is y.", "x"}}));
}

TEST(NoteCardsTest, QuestionKeyLeavesTheAnswerOut) {
    CardContent one{.kind = FlashcardKind::cloze,
                    .front = "{{a}} is b ",
                    .back = "a",
                    .options = {},
                    .correctIndex = {},
                    .explanation = {},
                    .sourcePage = {}};
    auto other = one;
    other.front = "{{c}} is b";
    EXPECT_EQ(questionKey(one), questionKey(other));
    other.kind = FlashcardKind::basic;
    EXPECT_NE(questionKey(one), questionKey(other));
}

}  // namespace
}  // namespace tessary
