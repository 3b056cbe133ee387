#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "ai/page_source.h"
#include "ai/source_chunks.h"
#include "ai/text_cleaning.h"
#include "base/text.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/poppler/poppler_pdf_reader.h"
#include "support/pdf_maker.h"

namespace tessary {
namespace {

const IcuTextServices kText;

// ---- cleaning ----

TEST(TextCleaningTest, WordsLinesAndParagraphs) {
    const std::vector<std::pair<std::string, std::string>> table{
        {"Photo-\nsynthesis", "Photosynthesis"},
        {"Anti-\nEuropean", "Anti- European"},
        {"Größen-\närgerlich", "Größenärgerlich"},
        {"1914-\nbis", "1914- bis"},
        {"a-\nb-\nc", "ab- c"},  // the b that ended one joint begins no other
        {"ab-\ncd-\nef", "abcdef"},
        {"-\na", "- a"},
        {"end-\n", "end-"},
        {"one\ntwo\nthree", "one two three"},
        {"one\n\ntwo", "one\n\ntwo"},
        {"one \n\n\n\n  two", "one\n\ntwo"},
        {"a \t  b", "a b"},
        {"a\n \nb", "a   b"},  // a line of spaces is no blank line
        {"a\r\nb\r\rc\r\n\r\nd", "a b\n\nc\n\nd"},
        {"a\x01\x01 b\x01", "a b"},
        {"x-\r\ny", "xy"},
        {"\u00A0\n\t a \u3000\n", "a"},
        {"  \n\n \x01 \t", ""},
        {"", ""},
        {"a\xFF-\nb", "a\xFF- b"},
    };
    for (const auto& [text, expected] : table) EXPECT_EQ(cleanedText(text, kText), expected) << text;
}

// ---- chunks ----

std::vector<std::string> textsOf(const std::vector<SourceChunk>& chunks) {
    std::vector<std::string> texts;
    for (const SourceChunk& chunk : chunks) texts.push_back(chunk.text);
    return texts;
}

TEST(SourceChunksTest, CutsWhereATextHasItsEnds) {
    struct Case {
        std::string text;
        std::size_t limit;
        std::vector<std::string> chunks;
    };
    const std::vector<Case> table{
        {"all of it", 9, {"all of it"}},
        {"", 9, {}},
        {"First one.\n\nSecond one. Third.", 19, {"First one.", "Second one. Third."}},
        {"One two. Three four. Five", 22, {"One two. Three four.", "Five"}},
        {"He said \"Stop.\" Then he went on", 20, {"He said \"Stop.\"", "Then he went on"}},
        {"alpha beta gamma delta", 12, {"alpha beta", "gamma delta"}},
        {"alpha beta", 5, {"alpha", "beta"}},
        {"A. bcdefghijklmnop qr", 20, {"A. bcdefghijklmnop", "qr"}},  // a cut so early would waste the rest
        {"abcdefghij", 4, {"abcd", "efgh", "ij"}},
        {"一二三。四五六七", 5, {"一二三。", "四五六七"}},
        {"👨‍👩‍👧‍👦👨‍👩‍👧‍👦e\u0301",
         2,
         {"👨‍👩‍👧‍👦👨‍👩‍👧‍👦", "e\u0301"}},
    };
    for (const Case& each : table) EXPECT_EQ(textsOf(chunked(each.text, each.limit, kText)), each.chunks) << each.text;
}

TEST(SourceChunksTest, EveryChunkKnowsItsPages) {
    const std::string text =
        "Own words first.\n\n[Page 1] Alpha beta gamma delta. Epsilon zeta eta theta.\n\n[Page 2] Iota.";
    const auto chunks = chunked(text, 50, kText);
    EXPECT_EQ(textsOf(chunks), (std::vector<std::string>{"Own words first.\n\n[Page 1] Alpha beta gamma delta.",
                                                         "[Page 1] Epsilon zeta eta theta.\n\n[Page 2] Iota."}));
    EXPECT_EQ(chunks[0].pages, std::set<std::int64_t>{1});
    EXPECT_EQ(chunks[1].pages, (std::set<std::int64_t>{1, 2}));
}

/// Whatever the text: no chunk is too long, none but the first lacks its page, none ends in a bare marker, and nothing
/// is lost.
TEST(SourceChunksTest, HoldsForRandomTexts) {
    std::mt19937 random(11);
    const std::vector<std::string> words{"cell",     "membrane.", "ATP",   "Größe",
                                         "日本語。", "e\u0301",   "a\n\n", "supercalifragilistic"};
    std::uniform_int_distribution<std::size_t> pick(0, words.size() - 1);
    for (int round = 0; round < 300; ++round) {
        std::string text;
        int page = 0;
        for (int i = 0; i < 120; ++i) {
            if (i % 17 == 3) text += "\n\n[Page " + std::to_string(++page) + "]\n";
            text += words[pick(random)] + " ";
        }
        const std::string cleaned = cleanedText(text, kText);
        const std::size_t limit = 40 + static_cast<std::size_t>(round);
        std::string rejoined;
        std::int64_t last = 0;
        for (const SourceChunk& chunk : chunked(cleaned, limit, kText)) {
            ASSERT_LE(kText.characterCount(chunk.text), limit);
            ASSERT_FALSE(chunk.text.ends_with("]")) << chunk.text;
            ASSERT_FALSE(chunk.text.ends_with("[Page")) << chunk.text;
            const std::string repeated = "[Page " + std::to_string(last) + "] ";
            const bool goesOn = last > 0 && chunk.text.starts_with(repeated);
            ASSERT_TRUE(last == 0 || chunk.text.starts_with("[Page ")) << chunk.text;
            rejoined += goesOn ? chunk.text.substr(repeated.size()) : chunk.text;
            if (!chunk.pages.empty()) last = *chunk.pages.rbegin();
        }
        ASSERT_EQ(last, page);
        const auto letters = [](std::string_view from) { return replacedAll(replacedAll(from, " ", ""), "\n", ""); };
        ASSERT_EQ(letters(rejoined), letters(cleaned));
    }
}

TEST(SourceChunksTest, CardsAreSharedByLength) {
    const auto chunksOf = [](std::vector<std::size_t> lengths) {
        std::vector<SourceChunk> chunks;
        for (const std::size_t length : lengths) chunks.push_back({.text = std::string(length, 'x'), .pages = {}});
        return chunks;
    };
    using Counts = std::vector<std::int64_t>;
    EXPECT_EQ(sharedCounts(chunksOf({10}), 7), Counts{7});
    EXPECT_EQ(sharedCounts(chunksOf({10, 10, 10}), 9), (Counts{3, 3, 3}));
    EXPECT_EQ(sharedCounts(chunksOf({30, 10}), 4), (Counts{3, 1}));
    EXPECT_EQ(sharedCounts(chunksOf({10, 10, 10, 10}), 2), (Counts{1, 0, 1, 0}));
    EXPECT_EQ(sharedCounts({}, 5), Counts{});
}

// ---- gathering ----

class GatherTest : public testing::Test {
protected:
    static std::filesystem::path fixture(const std::string& name) {
        return std::filesystem::path(TESSARY_FIXTURES) / "pdf" / name;
    }

    AIResult<std::string> gather(const PageSource& page, SourceChoice choice) {
        return gatherText(
            page, choice, pdfs_, [this](int n, int of) { progress_.emplace_back(n, of); }, stop_.get_token());
    }
    std::string problem(const PageSource& page, SourceChoice choice) {
        const AIResult<std::string> text = gather(page, choice);
        return text ? "no problem: " + *text : text.error().text();
    }

    PopplerPdfReader pdfs_;
    std::stop_source stop_;
    std::vector<std::pair<int, int>> progress_;
};

TEST_F(GatherTest, TextsAndMarkersInOrder) {
    const PageSource page{.body = "  My own words.\n", .pdfs = {fixture("plain.pdf"), fixture("user_password.pdf")}};
    const std::string own = "My own words.";
    const std::string pdf =
        "[Page 1]\nRespiration of the cell\nATP is made by oxidative phosphor-\nylation in the inner membrane.\nGröße "
        "café "
        "“quoted” – 5 µm\n\n[Page 2]\nPage two ends the text.\nαβγ ≤ π";
    EXPECT_EQ(gather(page, SourceChoice::whole), own + "\n\n" + pdf);
    EXPECT_EQ(gather(page, SourceChoice::pages), own);
    EXPECT_EQ(progress_, (std::vector<std::pair<int, int>>{{1, 2}, {2, 2}}));
    EXPECT_EQ(gather({.body = "", .pdfs = {fixture("marks.pdf")}}, SourceChoice::highlights),
              "[Page 1]\nhelium nucleus\n\nan electron and\nan antineutrino\n\nGamma decay\n\nphoton\n\nNeutron "
              "capture\n\nheavy\n\ntwo light nuclei\n\nMy own words\n\nAsk in class:\nwhy β⁺?");
}

TEST_F(GatherTest, SaysWhyThereIsNothing) {
    const auto pdf = [](const std::string& name) { return PageSource{.body = " \n", .pdfs = {fixture(name)}}; };
    const std::string noText = "Couldn't read any text in this PDF.";
    for (const char* const name :
         {"user_password.pdf", "image_only.pdf", "truncated.pdf", "garbage.pdf", "empty.pdf", "no such file.pdf"}) {
        EXPECT_EQ(problem(pdf(name), SourceChoice::whole), noText) << name;
    }
    const std::string noMarks = "This PDF has no highlights, underlines or post-its yet.";
    EXPECT_EQ(problem(pdf("plain.pdf"), SourceChoice::highlights), noMarks);
    EXPECT_EQ(problem({.body = "text"}, SourceChoice::highlights), noMarks);
    EXPECT_EQ(problem(pdf("user_password.pdf"), SourceChoice::highlights), noText);
    EXPECT_EQ(problem({}, SourceChoice::whole), "This page has no text yet.");
    EXPECT_EQ(problem(pdf("plain.pdf"), SourceChoice::pages), "This page has no text yet.");
    EXPECT_EQ(problem({.hasMore = true}, SourceChoice::pages), "Couldn't read any text on this page.");
    EXPECT_EQ(gather({.body = "x", .pdfs = {fixture("garbage.pdf")}}, SourceChoice::whole), "x");
}

TEST_F(GatherTest, StopsBetweenPages) {
    const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "tessary-long.pdf";
    std::ofstream(file, std::ios::binary) << makePdf(std::vector<std::string>(2000, "A page of text."));
    const auto stopAt = [this](int page, int pages) {
        progress_.emplace_back(page, pages);
        if (page == 5) stop_.request_stop();
    };
    const AIResult<std::string> text =
        gatherText({.body = "x", .pdfs = {file}}, SourceChoice::whole, pdfs_, stopAt, stop_.get_token());
    std::filesystem::remove(file);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.error(), AIError::cancelled());
    EXPECT_EQ(progress_.size(), 5U);
    EXPECT_EQ(progress_.back(), (std::pair{5, 2000}));
}

}  // namespace
}  // namespace tessary
