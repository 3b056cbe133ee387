#include "study/answer_check.h"

#include <gtest/gtest.h>

#include "platform/adapters/icu/icu_text_services.h"

namespace tessary {
namespace {

using Verdict = AnswerGrade::Verdict;
using Texts = std::vector<std::string>;

const IcuTextServices kText;

CardContent basic(const std::string& back) {
    CardContent card;
    card.front = "Q";
    card.back = back;
    return card;
}

CardContent cloze(const std::string& front) {
    CardContent card;
    card.kind = FlashcardKind::cloze;
    card.front = front;
    return card;
}

CardContent choice(Texts options, std::int64_t right) {
    CardContent card;
    card.kind = FlashcardKind::multipleChoice;
    card.options = std::move(options);
    card.correctIndex = right;
    return card;
}

AnswerGrade check(const std::string& expected, std::string_view typed) {
    return checkAnswer(basic(expected), typed, kText);
}

struct Pair {
    std::string expected;
    std::string typed;
};

TEST(AnswerCheckTest, CaseDiacriticsPunctuationAndSpacingAreForgiven) {
    for (const auto& [expected, typed] : std::vector<Pair>{{"Mitochondria", " mitochondria. "},
                                                           {"Résumé", "resume"},
                                                           {"Re\u0301sume\u0301", "résumé"},
                                                           {"Straße", "STRASSE"},
                                                           {"ice cream", "icecream"},
                                                           {"well-known", "well known"},
                                                           {"don’t", "dont"},
                                                           {"the cell wall", "Cell wall"},
                                                           {"**mitochondria**", "mitochondria"},
                                                           {"H₂O", "H2O"},
                                                           {"COVID-19", "covid 19"},
                                                           {"1914–1918", "1914-1918"},
                                                           {"x = 5", "x=5"},
                                                           {"x ≤ 5", "x <= 5"},
                                                           {"x ≠ 5", "x != 5"},
                                                           {"1,234,567", "1 234 567"},
                                                           {"−5 °C", "-5 C"},
                                                           {"10²", "10^2"},
                                                           {"U.S.A.", "usa"},
                                                           {"3.14", "3,14"},
                                                           {"10,000", "10000"},
                                                           {"10 000 m", "10,000 m"},
                                                           {"0.5", ".5"},
                                                           {"1,2,3", "1, 2, 3"},
                                                           {"東京", "「東京」"},
                                                           {"→", " → "},
                                                           {"κόσμος", "ΚΟΣΜΟΣ"},
                                                           {"किताब", "किताब।"},
                                                           {"Paris", "It is in Paris!"},
                                                           {"C++", "c++"}}) {
        const AnswerGrade grade = check(expected, typed);
        EXPECT_EQ(grade.verdict, Verdict::correct) << expected << " | " << typed;
        EXPECT_EQ(grade.score, 1);
        EXPECT_EQ(grade.feedback, "Matches the expected answer.");
        EXPECT_EQ(grade.missing, Texts());
    }
}

TEST(AnswerCheckTest, SignsThatTellAnswersApartCount) {
    for (const auto& [expected, typed] : std::vector<Pair>{{"3.14", "314"},
                                                           {"3.141", "3141"},
                                                           {"-5", "5"},
                                                           {"5", "-5"},
                                                           {"C++", "C"},
                                                           {"C", "C++"},
                                                           {"C#", "C"},
                                                           {"Na+", "Na"},
                                                           {"5%", "5"},
                                                           {"x > 5", "x < 5"},
                                                           {"x ≠ 5", "x = 5"},
                                                           {"1/2", "12"},
                                                           {"1 / 2", "1"},
                                                           {"10²", "102"},
                                                           {"1e-5", "1e5"},
                                                           {"1234,567", "1234567"},
                                                           {"10^-5", "10^5"},
                                                           {"1945", "1946"},
                                                           {"pH 7.4", "pH 7.0"},
                                                           {"H2O", "H20"},
                                                           {"19 45", "1945"},
                                                           {"299792458", "29979245"},
                                                           {"→", "←"},
                                                           {"की", "का"},
                                                           {"Paris", "London"},
                                                           {"mitosis", "meiosis"},
                                                           {"the cell", "the"},
                                                           {"(2+3)*4", "4"},
                                                           {"cat", "car"},
                                                           {"Paris", "🎉"},
                                                           {"", "x"}}) {
        const AnswerGrade grade = check(expected, typed);
        EXPECT_EQ(grade.verdict, Verdict::wrong) << expected << " | " << typed;
        EXPECT_LE(grade.score, 0.2);
        EXPECT_EQ(grade.feedback, "That doesn't match the expected answer.");
    }
    for (const std::string_view empty : {"", " \n "}) {
        EXPECT_EQ(check("", empty).verdict, Verdict::wrong);
        EXPECT_EQ(check("Paris", empty).score, 0);
    }
}

struct PartialCase {
    std::string expected;
    std::string typed;
    Texts missing;
};

TEST(AnswerCheckTest, SmallErrorsAndMissingPartsArePartial) {
    for (const auto& [expected, typed, missing] :
         std::vector<PartialCase>{{"mitochondria", "mitochodnria", {}},
                                  {"mitochondria", "mitocondira", {}},
                                  {"ice cream", "icecraem", {}},
                                  {"golgi apparatus", "golgi aparatus", {}},
                                  {"Straße", "Strase", {}},
                                  {"carbon dioxide", "carbon", {"dioxide"}},
                                  {"DNA polymerase", "DNA", {"polymerase"}},
                                  {"mitochondria, nucleus", "nucleus", {"mitochondria"}},
                                  {"red; Green blue; white", "white, red", {"Green blue"}},
                                  {"5 apples, 3 pears", "5 apples, 4 pears", {"3 pears"}},
                                  {"Paris", "not Paris", {}},
                                  {"Paris", "Paris or London", {}},
                                  {"not permeable", "permeable", {"not"}},
                                  {"man bites dog", "dog bites man", {}},
                                  {"ATP (adenosine triphosphate)", "adenosine triphosphate", {"ATP"}},
                                  {"ATP (adenosine triphosphate)", "ATP (adenosine diphosphate)", {}},
                                  {"E = mc^2", "mc^2", {"E ="}}}) {
        const AnswerGrade grade = check(expected, typed);
        EXPECT_EQ(grade.verdict, Verdict::partial) << expected << " | " << typed;
        EXPECT_GE(grade.score, 0.4);
        EXPECT_LE(grade.score, 0.7);
        EXPECT_EQ(grade.feedback, "Close, but part of the answer is missing.");
        EXPECT_EQ(grade.missing, missing) << expected << " | " << typed;
    }
    EXPECT_LT(check("one, two, three", "one").score, check("one, two, three", "one, three").score);
    EXPECT_EQ(check("long ago in a distant quiet valley", "long valleys far away where nothing grew").verdict,
              Verdict::partial);
    EXPECT_EQ(check("seven brave knights rode through dark forests", "dark chocolate").verdict, Verdict::wrong);
}

TEST(AnswerCheckTest, AlternativesPartsInAnyOrderAndOptionalParts) {
    for (const auto& [expected, typed] : std::vector<Pair>{{"colour / color", "color"},
                                                           {"colour / color", "colour/color"},
                                                           {"mitochondria, nucleus", "nucleus and mitochondria"},
                                                           {"salt + water", "water, salt"},
                                                           {"a; b", "b, a"},
                                                           {"cell, cell wall", "cell wall & cell"},
                                                           {"ice cream, tea", "tea and icecream"},
                                                           {"ATP (adenosine triphosphate)", "ATP"},
                                                           {"ATP (adenosine)", "atp adenosine"},
                                                           {"colo(u)r (noun)", "color"},
                                                           {"colo(u)r (noun)", "colour"},
                                                           {"(to) run / jog (slowly)", "jog"},
                                                           {"+ / plus", "+"}}) {
        EXPECT_EQ(check(expected, typed).verdict, Verdict::correct) << expected << " | " << typed;
    }
    EXPECT_NE(check("salt, water", "salt, water, gold").verdict, Verdict::correct);
}

TEST(AnswerCheckTest, MultipleChoiceTakesTheTextOrTheNumber) {
    const CardContent card = choice({"hypothermia", "hyperthermia", "Both (a and b)"}, 1);
    for (const std::string_view typed : {"hyperthermia", "Hyperthermia.", "2", "2."}) {
        EXPECT_EQ(checkAnswer(card, typed, kText).verdict, Verdict::correct) << typed;
    }
    EXPECT_EQ(checkAnswer(card, "hypertermia", kText).verdict, Verdict::partial);
    for (const std::string_view typed :
         {"hypothermia", "hypotermia", "hypethermia", "1", "0", "4", "both", "", "99999999999999"}) {
        EXPECT_EQ(checkAnswer(card, typed, kText).verdict, Verdict::wrong) << typed;
    }
    EXPECT_EQ(checkAnswer(choice({"4", "2", "3"}, 1), "2", kText).verdict, Verdict::correct);
    EXPECT_EQ(checkAnswer(choice({"4", "2", "3"}, 1), "3", kText).verdict, Verdict::wrong);
    EXPECT_EQ(checkAnswer(choice({"A, B", "B, A"}, 0), "b, a", kText).verdict, Verdict::wrong);
    EXPECT_EQ(checkAnswer(choice({"NA", "Na"}, 1), "Na", kText).verdict, Verdict::correct);
    EXPECT_EQ(checkAnswer(choice({"NA", "Na"}, 1), "NA", kText).verdict, Verdict::wrong);
    EXPECT_EQ(checkAnswer(choice({"+", "-"}, 0), "-", kText).verdict, Verdict::wrong);
}

TEST(AnswerCheckTest, EachBlankIsJudgedAlone) {
    const CardContent card = cloze("{{Paris}} lies on the {{Seine}}, in {{France}}.");
    EXPECT_EQ(checkBlanks(card, {"paris", "seine", "france"}, kText),
              (AnswerGrade{Verdict::correct, 1, "Every blank is right.", {}}));
    const AnswerGrade some = checkBlanks(card, {"Paris", "Siene"}, kText);
    EXPECT_EQ(some.verdict, Verdict::partial);
    EXPECT_EQ(some.missing, (Texts{"Seine", "France"}));
    EXPECT_EQ(some.feedback, "Close, but part of the answer is missing.");
    EXPECT_NEAR(some.score, (1 + 0.67) / 3, 0.01);
    const AnswerGrade none = checkBlanks(card, {"Seine", "Paris", ""}, kText);
    EXPECT_EQ(none.verdict, Verdict::wrong);
    EXPECT_EQ(none.feedback, "None of the blanks match.");

    for (const std::string_view typed : {"Paris · Seine · France", "Paris; Seine; France", "paris,seine,france"}) {
        EXPECT_EQ(checkAnswer(card, typed, kText).verdict, Verdict::correct) << typed;
    }
    EXPECT_EQ(checkAnswer(card, "Seine, Paris, France", kText).verdict, Verdict::partial);
    EXPECT_EQ(checkAnswer(cloze("{{3,14}} and {{2,71}}"), "3,14, 2,71", kText).verdict, Verdict::correct);
    EXPECT_EQ(checkAnswer(cloze("{{salt, water}}"), "water, salt", kText).verdict, Verdict::correct);
}

TEST(AnswerCheckTest, WhateverIsPastedIsGraded) {
    std::string words;
    std::string letters(100'000, 'a');
    for (int i = 0; words.size() < 100'000; ++i) words += "wordnumber" + std::to_string(i % 7) + "x, ";
    EXPECT_EQ(check(words, words).verdict, Verdict::correct);
    EXPECT_EQ(check(letters, letters + "b").verdict, Verdict::wrong);
    for (const std::string& typed : {words, letters, std::string(100'000, ' ') + "-", std::string(100'000, '('),
                                     std::string(100'000, '+'), std::string("\xff\xfe\xc3"), std::string("a\0b", 3)}) {
        EXPECT_NE(check("the answer (in short) / 42", typed).verdict, Verdict::correct);
        EXPECT_LE(check(typed, "answer").score, 1);
    }
}

}  // namespace
}  // namespace tessary
