#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "contract/folder_fixture.h"
#include "platform/adapters/poppler/poppler_pdf_reader.h"
#include "support/pdf_maker.h"

namespace tessary {
namespace {

using Opened = std::expected<std::unique_ptr<PdfDocument>, PdfProblem>;
using Texts = std::vector<std::string>;

fs::path fixture(const std::string& name) { return fs::path(TESSARY_FIXTURES) / "pdf" / name; }

Opened openPdf(const fs::path& file) { return PopplerPdfReader().open(file); }

std::string nameOf(PdfMarkup::Kind kind) {
    switch (kind) {
        case PdfMarkup::Kind::highlight: return "highlight";
        case PdfMarkup::Kind::underline: return "underline";
        case PdfMarkup::Kind::strikeOut: return "strike-out";
        case PdfMarkup::Kind::freeText: return "free text";
        case PdfMarkup::Kind::note: return "note";
    }
    return "?";
}

Texts markupOf(PdfDocument& document, int page) {
    Texts result;
    for (const PdfMarkup& markup : document.pageMarkup(page))
        result.push_back(nameOf(markup.kind) + ": " + markup.text);
    return result;
}

Texts textsOf(PdfDocument& document) {
    Texts result;
    for (int page = 0; page < document.pageCount(); ++page) result.push_back(document.pageText(page));
    return result;
}

std::string problemOf(const Opened& opened) {
    if (opened) return "none";
    switch (opened.error()) {
        case PdfProblem::missing: return "missing";
        case PdfProblem::damaged: return "damaged";
        case PdfProblem::encrypted: return "encrypted";
    }
    return "?";
}

class PdfReaderTest : public FolderFixture, public ::testing::Test {
protected:
    PdfReaderTest() : FolderFixture(Kind::posix) {}
};

const Texts kPlain = {
    "Respiration of the cell\nATP is made by oxidative phosphor-\nylation in the inner membrane.\n"
    "Größe café “quoted” – 5 µm",
    "Page two ends the text.\nαβγ ≤ π"};

TEST(PdfReader, ReadsPagesInReadingOrder) {
    struct Case {
        std::string file;
        Texts pages;
    };
    const std::vector<Case> cases = {
        {"plain.pdf", kPlain},
        {"owner_password.pdf", kPlain},
        {"columns.pdf",
         {"Chapter one: two columns under one heading that is long\nLeft one is the first line\nLeft two goes on\n"
          "Left three ends it\nRight one is the fourth\nRight two goes on\nRight three ends it"}},
        {"turned.pdf", Texts(3, "The sheet is turned\nby a quarter circle")},
        {"covered.pdf", {"Osmosis moves water slowly\nthrough a membrane\nonly solvent\nDrawn by\nthe reader\nCut"}},
        {"image_only.pdf", {""}},
        {"lost_page.pdf", {"First", "Third", ""}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.file);
        const Opened opened = openPdf(fixture(one.file));
        ASSERT_TRUE(opened);
        EXPECT_EQ(textsOf(**opened), one.pages);
    }
}

TEST(PdfReader, ReadsWhatIsMarkedFromTopToBottom) {
    struct Case {
        std::string file;
        std::vector<Texts> pages;
    };
    const std::vector<Case> cases = {
        {"plain.pdf", {{}, {}}},
        {"image_only.pdf", {{}}},
        {"lost_page.pdf", {{}, {}, {}}},
        {"marks.pdf",
         {{"highlight: helium nucleus", "highlight: an electron and\nan antineutrino", "highlight: Gamma decay",
           "highlight: photon", "underline: Neutron capture", "strike-out: heavy", "underline: two light nuclei",
           "free text: My own words", "note: Ask in class:\nwhy β⁺?"},
          {}}},
        {"odd_quads.pdf",
         {{"highlight: zym", "underline: activation", "highlight: energy of a reaction",
           "underline: energy of a reaction and leave\nit unchanged by oxidative phosphor-",
           "highlight: phosphor-\nylation", "strike-out: Keys locks", "strike-out: glove"}}},
        {"covered.pdf",
         {{"free text: only solvent", "highlight: Osmosis moves water slowly\nthrough a membrane",
           "free text: Drawn by\nthe reader", "free text: Cut"}}},
        {"turned.pdf", {{"highlight: sheet\nquarter"}, {"underline: sheet"}, {"strike-out: circle"}}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.file);
        const Opened opened = openPdf(fixture(one.file));
        ASSERT_TRUE(opened);
        ASSERT_EQ((*opened)->pageCount(), static_cast<int>(one.pages.size()));
        for (std::size_t page = 0; page < one.pages.size(); ++page) {
            EXPECT_EQ(markupOf(**opened, static_cast<int>(page)), one.pages[page]);
        }
    }
}

TEST(PdfReader, ReadingMarkupLeavesThePageAsItIs) {
    const Opened opened = openPdf(fixture("covered.pdf"));
    ASSERT_TRUE(opened);
    const std::string before = (*opened)->pageText(0);
    EXPECT_NE(before.find("only solvent"), std::string::npos);
    const Texts markup = markupOf(**opened, 0);
    EXPECT_EQ((*opened)->pageText(0), before);
    EXPECT_EQ(markupOf(**opened, 0), markup);
}

TEST(PdfReader, HasNothingOnPagesThatAreNotThere) {
    const Opened opened = openPdf(fixture("marks.pdf"));
    ASSERT_TRUE(opened);
    for (const int page : {-1, 2, 1'000'000}) {
        EXPECT_EQ((*opened)->pageText(page), "");
        EXPECT_EQ(markupOf(**opened, page), Texts());
    }
}

TEST_F(PdfReaderTest, TellsWhyAFileCannotBeRead) {
    fs::create_symlink("nowhere", folder_ / "dangling");
    fs::create_directory(folder_ / "folder.pdf");
    ASSERT_EQ(::mkfifo((folder_ / "pipe.pdf").c_str(), 0600), 0);
    struct Case {
        fs::path file;
        std::string problem;
    };
    const std::vector<Case> cases = {
        {folder_ / "none.pdf", "missing"},
        {folder_ / "dangling", "missing"},
        {folder_ / "folder.pdf", "missing"},
        {folder_ / "pipe.pdf", "missing"},
        {"", "missing"},
        {fixture("empty.pdf"), "damaged"},
        {fixture("truncated.pdf"), "damaged"},
        {fixture("garbage.pdf"), "damaged"},
        {fixture("no_pages.pdf"), "damaged"},
        {fixture("README.md"), "damaged"},
        {fixture("user_password.pdf"), "encrypted"},
    };
    ::testing::internal::CaptureStderr();
    for (const Case& one : cases) EXPECT_EQ(problemOf(openPdf(one.file)), one.problem) << one.file;
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(PdfReaderTest, AnyFileNameWillDo) {
    for (const char* name : {"Größe – β.pdf", "bytes\xff\xfe.pdf", "no suffix"}) {
        fs::copy_file(fixture("plain.pdf"), folder_ / name);
        const Opened opened = openPdf(folder_ / name);
        ASSERT_TRUE(opened) << name;
        EXPECT_EQ(textsOf(**opened), kPlain) << name;
    }
}

TEST_F(PdfReaderTest, ReadsAThickBookPageByPage) {
    constexpr int kPages = 2000;
    Texts pages;
    for (int page = 0; page < kPages; ++page) pages.push_back("Page " + std::to_string(page) + "\nends (here) \\ now");
    put(folder_ / "book.pdf", makePdf(pages));
    const Opened opened = openPdf(folder_ / "book.pdf");
    ASSERT_TRUE(opened);
    EXPECT_EQ((*opened)->pageText(kPages - 1), pages.back());
    EXPECT_EQ(textsOf(**opened), pages);
}

TEST(PdfReader, SeveralThreadsReadSeveralDocuments) {
    constexpr int kRounds = 20;
    constexpr std::size_t kReaders = 4;
    const std::array<std::string, 2> files = {"marks.pdf", "covered.pdf"};
    PopplerPdfReader reader;
    const auto read = [&](const std::string& file) {
        const Opened opened = reader.open(fixture(file));
        if (!opened) return Texts();
        Texts all = markupOf(**opened, 0);
        all.push_back((*opened)->pageText(0));
        return all;
    };
    const std::array<Texts, 2> expected = {read(files[0]), read(files[1])};
    ASSERT_EQ(expected[0].size(), 10U);
    std::array<int, kReaders> alike = {};
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < kReaders; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < kRounds; ++round) alike[i] += read(files[i % 2]) == expected[i % 2] ? 1 : 0;
        });
    }
    threads.clear();
    for (const int count : alike) EXPECT_EQ(count, kRounds);
}

}  // namespace
}  // namespace tessary
