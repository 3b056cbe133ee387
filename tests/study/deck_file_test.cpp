#include "study/deck_file.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace tessary {
namespace {

CardContent card(std::string front, std::string back, FlashcardKind kind = FlashcardKind::basic) {
    CardContent content;
    content.kind = kind;
    content.front = std::move(front);
    content.back = std::move(back);
    return content;
}

CardContent choice(std::string question, std::vector<std::string> options, std::size_t right) {
    auto content = card(std::move(question), options.at(right), FlashcardKind::multipleChoice);
    content.options = std::move(options);
    content.correctIndex = static_cast<std::int64_t>(right);
    return content;
}

std::vector<CardContent> cardsOf(std::string_view file) {
    const auto import = parseDeck(file);
    return import ? import->cards : std::vector<CardContent>{};
}

constexpr std::string_view kHeader = "#separator:tab\n#html:true\n#columns:Front\tBack\tKind\n";

TEST(FlashcardTest, ClozeTermsAreTheNonEmptyRunsInDoubleBraces) {
    EXPECT_EQ(clozeTerms("{{}} a {{b}} and {{c d}} {{e"), (std::vector<std::string>{"b", "c d"}));
    EXPECT_EQ(clozeWithBlanks("{{a}} is {{b}}.", "___"), "___ is ___.");
    EXPECT_EQ(clozeRevealed("{{a}} is {{b}}."), "a is b.");
}

TEST(FlashcardTest, ContentProblems) {
    EXPECT_TRUE(contentProblem(card(" ", "b")));
    EXPECT_TRUE(contentProblem(card("no blank", "b", FlashcardKind::cloze)));
    EXPECT_FALSE(contentProblem(card("a {{blank}}", "", FlashcardKind::cloze)));
    auto content = choice("q", {"a", "b"}, 1);
    EXPECT_FALSE(contentProblem(content));
    content.correctIndex = 2;
    EXPECT_TRUE(contentProblem(content));
}

TEST(FlashcardTest, SetContentKeepsTheRest) {
    Flashcard flashcard;
    flashcard.flagged = true;
    const auto content = choice("q", {"a", "b"}, 1);
    setContent(flashcard, content);
    EXPECT_EQ(contentOf(flashcard), content);
    EXPECT_TRUE(flashcard.flagged);
}

TEST(DeckFileTest, ExportsByteForByte) {
    EXPECT_EQ(exportDeck({card("one\r\ntwo", "b & c < d"), choice("q", {"a", "b"}, 1)}),
              std::string(kHeader) + "one<br>two\tb & c < d\tbasic\nq<br><br>1. a<br>2. b\tb\tmultipleChoice\n");
    EXPECT_EQ(exportDeck({card("#\t&lt;<b>", "\"x")}),
              std::string(kHeader) + "&#35;&#9;&amp;lt;&lt;b>\t&quot;x\tbasic\n");
}

TEST(DeckFileTest, WritesTheRightOptionForAnEmptyBack) {
    auto content = choice("q", {"a", "b"}, 1);
    content.back.clear();
    EXPECT_EQ(cardsOf(exportDeck({content})), (std::vector{choice("q", {"a", "b"}, 1)}));
}

TEST(DeckFileTest, TheRightOptionStaysRightWhateverTheBackSays) {
    auto content = choice("q", {"a", "b"}, 1);
    for (const std::string_view back : {"a", "b, as the text says", " "}) {
        content.back = back;
        EXPECT_EQ(cardsOf(exportDeck({content})), (std::vector{choice("q", {"a", "b"}, 1)})) << back;
    }
}

TEST(DeckFileTest, NastyContentReadsBackEqual) {
    const std::vector<CardContent> cards = {
        card("#x\t\"&amp;&", "\"\"<br>"), card(" {{c1::x}} ", "x", FlashcardKind::cloze),
        card("{{c1::x}}", "\n"),          choice("1. q\n\n1. x\n2. y\n", {"1. a\n\n1. b\n2. c\n", "", "3. "}, 2),
        choice("q", {"a", "12. b<"}, 1),
    };
    EXPECT_EQ(cardsOf(exportDeck(cards)), cards);
}

TEST(DeckFileTest, RandomContentReadsBackEqual) {
    constexpr auto kPieces = std::to_array<std::string_view>(
        {"1", "2", ". ", "\n", "\t", "\"", "#", "&", "amp;", "#46;", "<", "br>", "/p>", ">", "a", " ", "{{c1::", "}}"});
    std::mt19937 random(7);
    const auto text = [&] {
        std::string result = "\n";
        for (auto left = random() % 9; left > 0; --left) result += kPieces[random() % kPieces.size()];
        return result.substr(random() % 2);
    };
    for (int round = 0; round < 20'000; ++round) {
        const auto content =
            round % 2 == 0 ? card(text() + "x", text()) : choice(text() + "?", {text(), "z" + text()}, 1);
        EXPECT_EQ(cardsOf(exportDeck({content})), (std::vector{content})) << exportDeck({content});
    }
}

TEST(DeckFileTest, GuessesTheSeparator) {
    const std::vector expected = {card("a", "b")};
    for (const std::string_view file : {"a\tb", "a;b\r\n", "a,b\n", "a|b",
                                        "\xEF\xBB\xBF"
                                        "a,b",
                                        "\n\na;b", "#separator:Comma\na,b", "#SEPARATOR:|\na|b"}) {
        EXPECT_EQ(cardsOf(file), expected) << file;
    }
}

TEST(DeckFileTest, ReadsQuotedFields) {
    EXPECT_EQ(cardsOf("\"a, \"\"b\"\"\nc\",d\n"), (std::vector{card("a, \"b\"\nc", "d")}));
    EXPECT_EQ(cardsOf("\"a\" b,c\n\"d,e"), (std::vector{card("\"a\" b", "c"), card("\"d", "e")}));
}

TEST(DeckFileTest, ReadsHtmlOnlyWhenToldTo) {
    EXPECT_EQ(cardsOf("#html:true\n<p>a</p><b>b</b><BR/>c &lt; &#x41;&nope;\td</div>"),
              (std::vector{card("a\nb\nc < A&nope;", "d")}));
    EXPECT_EQ(cardsOf("a<br>&amp;\tb"), (std::vector{card("a<br>&amp;", "b")}));
}

TEST(DeckFileTest, FindsTheColumns) {
    const std::vector expected = {card("a", "b")};
    EXPECT_EQ(cardsOf("#separator:;\n#columns:guid;BACK;front\nx;b;a"), expected);
    EXPECT_EQ(cardsOf("#separator:;\n#columns:Guid;Term;Tags;Meaning\nx;a;t;b"), expected);
    EXPECT_EQ(cardsOf("#guid column:1\n#deck column:3\nx\ta\td\tb"), expected);
}

TEST(DeckFileTest, NumberedBlanksMakeACloze) {
    EXPECT_EQ(cardsOf("{{c1::Rome::city}} is in {{c2::Italy}}\t"),
              (std::vector{card("{{Rome}} is in {{Italy}}", "Rome · Italy", FlashcardKind::cloze)}));
}

TEST(DeckFileTest, ReportsBadLinesAndGoesOn) {
    const auto import =
        parseDeck(std::string(kHeader) + "\"a\nb\"\tc\t\nalone\n\tx\tbasic\na\tb\todd\n\nq\ta\tcloze\nx\ty\n");
    ASSERT_TRUE(import);
    EXPECT_EQ(import->cards, (std::vector{card("a\nb", "c"), card("x", "y")}));
    std::vector<std::size_t> lines;
    for (const auto& problem : import->problems) lines.push_back(problem.line);
    EXPECT_EQ(lines, (std::vector<std::size_t>{6, 7, 8, 10}));
}

TEST(DeckFileTest, Errors) {
    EXPECT_EQ(parseDeck("a\tb\xFF").error(), "Couldn't read that file.");
    EXPECT_EQ(parseDeck("").error(), "No cards found in that file.");
    EXPECT_EQ(parseDeck("alone\n").error(), "No cards found in that file.");
}

}  // namespace
}  // namespace tessary
