#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <fstream>

#include "desktop/desk_rig.h"
#include "desktop/settings/library_care_model.h"
#include "desktop/settings/library_exchange_model.h"
#include "library/library_exchange.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr int kPatience = 20000;  ///< milliseconds until a test gives up

template <class Condition>
[[nodiscard]] bool becomes(Condition condition) {
    return QTest::qWaitFor(condition, kPatience);
}

// ---- exports and imports ----

class ExchangeTest : public testing::Test {
protected:
    ExchangeTest() { exchange.setDesk(&rig.desk); }

    bool done() {
        return becomes([this] { return !exchange.busy(); });
    }
    QUrl url(const fs::path& file) const { return QUrl::fromLocalFile(toQml(file.string())); }
    fs::path out(const std::string& name) const { return rig.home / name; }
    void put(const fs::path& file, const std::string& text) const {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    std::string content(const fs::path& file) const { return PosixFileSystem().read(file).value_or(""); }

    DeskRig<> rig;
    LibraryExchangeModel exchange;
};

TEST_F(ExchangeTest, WhatWasExportedComesBackWhole) {
    const PageId page = rig.addPage("Leaves", {}, "Green.");
    rig.addPage("Roots");
    rig.addCard(page, "Colour?", "Green");
    QSignalSpy finished(&exchange, &LibraryExchangeModel::finished);
    exchange.exportTo("json", url(out("a.json")));
    EXPECT_TRUE(exchange.busy());
    ASSERT_TRUE(done());
    exchange.exportTo("markdown", url(out("a.md")));
    ASSERT_TRUE(done());
    exchange.exportTo("deck", url(out("a.txt")));
    ASSERT_TRUE(done());
    EXPECT_EQ(finished.count(), 3);
    EXPECT_EQ(finished[0][0].toString(), "Exported 2 pages to " + toQml(out("a.json").string()) + ".");
    EXPECT_EQ(finished[2][0].toString(), "Exported 1 card to " + toQml(out("a.txt").string()) + ".");
    EXPECT_EQ(content(out("a.json")), exportedJson(rig.library()).value());
    EXPECT_EQ(content(out("a.md")), exportedMarkdown(rig.library()).value());

    DeskRig<> other;
    exchange.setDesk(&other.desk);
    exchange.importFrom("json", url(out("a.json")));
    ASSERT_TRUE(done());
    EXPECT_EQ(exchange.lastResult(), "Added 2 pages.");
    EXPECT_EQ(other.library().entries().find(page)->body, "Green.");
    exchange.importFrom("json", url(out("a.json")));
    ASSERT_TRUE(done());
    EXPECT_EQ(exchange.lastResult(), "Added 0 pages. 2 pages were in the library already.");
    exchange.importFrom("deck", url(out("a.txt")));
    ASSERT_TRUE(done());
    EXPECT_EQ(exchange.lastResult(), "Added 1 card on the new page “a”.");
    ASSERT_EQ(other.cards().cards().size(), 1U);
    EXPECT_EQ(other.cards().cards()[0].back, "Green");
    exchange.setDesk(&rig.desk);
}

TEST_F(ExchangeTest, WhatCannotBeDoneIsToldAndChangesNothing) {
    exchange.exportTo("json", url(out("empty.json")));
    ASSERT_TRUE(done());
    EXPECT_EQ(exchange.lastResult(), "There are no pages to export.");
    rig.addPage("One");
    const auto tell = [&](const std::string& name, auto act) {
        act();
        EXPECT_TRUE(done());
        EXPECT_TRUE(exchange.lastFailed()) << name;
        return exchange.lastResult().toStdString();
    };
    EXPECT_EQ(tell("no cards", [&] { exchange.exportTo("deck", url(out("d.txt"))); }), "There are no cards to export.");
    EXPECT_EQ(tell("inside", [&] { exchange.exportTo("json", url(rig.library().folders().entries())); }),
              "An export can't go into the library's own folder. Choose another place.");
    EXPECT_TRUE(tell("no folder", [&] {
                    exchange.exportTo("markdown", url(out("no/such/a.md")));
                }).starts_with("Couldn't save the file: "));
    EXPECT_EQ(tell("kind", [&] { exchange.exportTo("pdf", url(out("a.pdf"))); }),
              "There is no export of the kind \"pdf\".");
    put(out("broken.json"), "{");
    EXPECT_EQ(tell("broken", [&] { exchange.importFrom("json", url(out("broken.json"))); }),
              "The file holds no pages that can be read.");
    EXPECT_EQ(tell("missing", [&] { exchange.importFrom("deck", url(out("none.txt"))); }), "Couldn't read that file.");
    EXPECT_EQ(tell("no notes", [&] { exchange.importFrom("notes", url(out("none"))); }),
              "No notes could be imported from there.");
    EXPECT_FALSE(exchange.lastProblems().isEmpty());
    EXPECT_EQ(rig.library().entries().size(), 1U);
}

TEST_F(ExchangeTest, AFolderOfNotesBecomesANotebookWhileTheWindowLives) {
    constexpr int kNotes = 4000;
    for (int i = 0; i < kNotes; ++i) put(out("Botany/note " + std::to_string(i) + ".md"), "Text " + std::to_string(i));
    put(out("Botany/sub/inner.md"), "Inner");
    put(out("Botany/bad.md"), std::string("\xff\xfe", 2));
    int turns = 0;
    int busiest = 0;
    QObject::connect(&exchange, &LibraryExchangeModel::changed, [&] {
        ++turns;
        busiest = std::max(busiest, static_cast<int>(exchange.progress() * 100));
    });
    exchange.importFrom("notes", url(out("Botany")));
    EXPECT_TRUE(rig.library().entries().empty()) << "the folder is read elsewhere first";
    exchange.importFrom("notes", url(out("Botany")));
    EXPECT_TRUE(exchange.busy()) << "one at a time";
    ASSERT_TRUE(done());
    EXPECT_EQ(exchange.lastResult(), "Added 4,002 pages in 1 new notebook.");
    EXPECT_EQ(exchange.lastProblems().size(), 1);
    EXPECT_EQ(rig.library().notebooks()[0].name, "Botany");
    EXPECT_GT(turns, 2);
    exchange.importFrom("notes", url(out("Botany")));
    ASSERT_TRUE(done());
    EXPECT_TRUE(exchange.lastResult().startsWith("Added 0 pages. 4,00")) << exchange.lastResult().toStdString();
    EXPECT_EQ(rig.library().entries().size(), 4002U);
}

TEST_F(ExchangeTest, WhatChangesBetweenTwoNotesIsNoTrouble) {
    for (const char* const name : {"a", "b", "c"}) put(out("Botany/leaves/" + std::string(name) + ".md"), name);
    NoteImport notes(rig.library(), rig.workspace->services(), rig.ports.frontMatter, {});
    notes.findNotes({out("Botany")});
    while (rig.library().entries().size() < 2) ASSERT_TRUE(notes.step());
    const PageId folder = *rig.library().entries()[1].parentID;
    ASSERT_TRUE(rig.library().deletePage(folder)) << "with the first note, while the next ones come in";
    while (notes.step()) {
    }
    const NoteImportReport report = notes.report();
    EXPECT_EQ(report.problems.size(), 2U);
    EXPECT_TRUE(rig.library().entries().empty());
    EXPECT_EQ(rig.library().trash().size(), 2U);
}

TEST_F(ExchangeTest, ACancelledImportKeepsWhatHasComeIn) {
    constexpr int kPages = 20000;
    ExportSource many;
    for (int i = 0; i < kPages; ++i) {
        JournalEntry page;
        page.id = PageId{RandomIds().next()};
        page.title = "P";
        many.pages.push_back(std::make_shared<const JournalEntry>(page));
    }
    put(out("many.json"), exportedJson(many).value());
    QObject::connect(&exchange, &LibraryExchangeModel::changed, [&] {
        if (exchange.progress() > 0) exchange.cancel();
    });
    exchange.importFrom("json", url(out("many.json")));
    ASSERT_TRUE(done());
    const std::size_t kept = rig.library().entries().size();
    EXPECT_GT(kept, 0U);
    EXPECT_LT(kept, static_cast<std::size_t>(kPages));
    EXPECT_TRUE(exchange.lastResult().startsWith("Cancelled. Added ")) << exchange.lastResult().toStdString();
}

TEST_F(ExchangeTest, ABackupGoesWhereTheAutomaticOnesAreAndIsSeenThere) {
    rig.addPage("Kept");
    LibraryCareModel care;
    care.setDesk(&rig.desk);
    EXPECT_EQ(care.backupFolderUrl(), url(rig.paths.documents)) << "not made yet";
    exchange.backUp();
    ASSERT_TRUE(done());
    const fs::path file = autoBackupFile(rig.paths.documents, rig.workspace->services());
    EXPECT_EQ(content(file), exportedJson(rig.library()).value());
    care.measure();
    ASSERT_TRUE(becomes([&] { return !care.totalSize().isEmpty(); }));
    EXPECT_EQ(care.lastBackupFile().toStdString(), file.filename().string());
    EXPECT_NE(care.lastBackup(), "");
    EXPECT_EQ(care.backupFolderUrl(), url(file.parent_path()));
    EXPECT_EQ(care.sizes()[0].toMap()["text"].toString().section(" · ", 0, 0), "1 page");
}

// ---- the check ----

TEST(LibraryCareTest, ACheckSeesWhatWasJustWrittenAndWhatIsWrong) {
    DeskRig<> rig;
    LibraryCareModel care;
    care.setDesk(&rig.desk);
    const auto checked = [&] {
        care.check();
        EXPECT_TRUE(care.checking());
        return becomes([&] { return !care.checking(); });
    };
    JournalEntry page;
    page.title = "Cell";
    page.imageFilenames = {"gone.png"};
    const PageId id = rig.library().addPage(page).value();
    rig.addCard(id, "Q", "A");
    ASSERT_TRUE(checked());
    EXPECT_EQ(care.checkProblems(), 1) << "the card's page is written before the check begins";
    EXPECT_EQ(care.checkResult(), "1 problem found.");
    EXPECT_TRUE(care.findings()[0].contains("gone.png"));
    fs::create_directories(rig.library().folders().images());
    std::ofstream(rig.library().folders().images() / "gone.png") << "png";
    ASSERT_TRUE(checked());
    EXPECT_EQ(care.checkResult(), "The library is in order.");
}

}  // namespace
}  // namespace tessary
