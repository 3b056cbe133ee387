#include "desktop/search/search_model.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtTest/QAbstractItemModelTester>

#include "desktop/desk_rig.h"
#include "desktop/search/text_marks.h"

namespace tessary {
namespace {

/// The search on a library of its own. What it finds arrives through the event loop.
class SearchTest : public testing::Test, public DeskRig<> {
protected:
    SearchTest() { search_.setDesk(&desk); }

    void find(const QString& query) {
        search_.setQuery(query);
        waitForTheSearch();
    }
    void waitForTheSearch() {
        while (search_.searching()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    [[nodiscard]] QVariant cell(int row, SearchModel::Role role) const {
        return search_.data(search_.index(row), role);
    }
    /// "Text: Optics; …"
    [[nodiscard]] std::string shown() const {
        QStringList rows;
        for (int row = 0; row < search_.rowCount(); ++row)
            rows.append(cell(row, SearchModel::SectionRole).toString() + ": " +
                        cell(row, SearchModel::TitleRole).toString());
        return rows.join("; ").toStdString();
    }
    /// With its marked parts in brackets.
    [[nodiscard]] std::string marked(int row, SearchModel::Role text, SearchModel::Role marks) const {
        QString shown = cell(row, text).toString();
        const QVariantList parts = cell(row, marks).toList();
        for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
            const int start = part->toMap()["start"].toInt();
            shown.insert(start + part->toMap()["length"].toInt(), "]").insert(start, "[");
        }
        return shown.toStdString();
    }

    SearchModel search_;
};

TEST_F(SearchTest, RowsTellWhatWasFoundAndWhere) {
    const QAbstractItemModelTester tester(&search_);
    const NotebookId notebook = library().addNotebook("Cell Biology");
    const PageId parent = addPage("Energy", notebook);
    JournalEntry page;
    page.title = "Photosynthese 🌱 Übung";
    page.body = "Chlorophyll 🌿 nimmt Licht für die Übung auf.";
    page.tags = {"übungen", "exam"};
    page.parentID = parent;
    const PageId found = library().addPage(page).value();
    addPage("Lose", {}, "eine Ubung");
    find("ubung");
    EXPECT_EQ(shown(), "Titles: Photosynthese 🌱 Übung; Text: Lose");
    EXPECT_EQ(search_.pageAt(0), toQml(found));
    EXPECT_EQ(search_.placeAt(0), toQml(notebook));
    EXPECT_EQ(search_.placeAt(1), "loose");
    EXPECT_EQ(search_.placeAt(2), "");
    EXPECT_EQ(marked(0, SearchModel::TitleRole, SearchModel::TitleMarksRole), "Photosynthese 🌱 [Übung]");
    EXPECT_EQ(marked(0, SearchModel::ExcerptRole, SearchModel::ExcerptMarksRole),
              "Chlorophyll 🌿 nimmt Licht für die [Übung] auf.");
    EXPECT_EQ(cell(0, SearchModel::TagsRole).toStringList(), QStringList{"übungen"});
    EXPECT_EQ(cell(0, SearchModel::PathRole), "Cell Biology › Energy");
    EXPECT_EQ(cell(1, SearchModel::ColorRole), "");
    EXPECT_EQ(search_.summary(), "2 pages");
}

TEST_F(SearchTest, TheLastOfManyLettersIsWhatIsFound) {
    for (const char* const title : {"tea", "team", "teapot"}) addPage(title);
    for (const char* const typed : {"t", "te", "tea", "teap"}) search_.setQuery(typed);
    waitForTheSearch();
    EXPECT_EQ(shown(), "Titles: teapot");
    find("");
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(search_.summary(), "");
}

TEST_F(SearchTest, FollowsTheLibraryWhileItIsShown) {
    const PageId page = addPage("Heat", {}, "entropy");
    find("entropy");
    ASSERT_EQ(shown(), "Text: Heat");
    ASSERT_TRUE(library().deletePage(page));
    while (search_.rowCount() > 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    addPage("Cold", {}, "entropy too");
    while (search_.rowCount() == 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(shown(), "Text: Cold");
}

TEST_F(SearchTest, ASearchThatRunsEndsWithItsModel) {
    for (int i = 0; i < 500; ++i) addPage("Page", {}, std::string(20'000, 'x') + "ü");
    auto search = std::make_unique<SearchModel>();
    search->setDesk(&desk);
    search->setQuery("y");
    search.reset();
    QCoreApplication::processEvents();
    find("page");
    EXPECT_EQ(search_.summary(), "The first 100 pages");
}

TEST(TextMarksTest, BoxesLieOnTheirLines) {
    TextMarks marks;
    const auto boxesOf = [&](qreal width, int start, int length) {
        marks.setProperty("text", "one two three");
        marks.setProperty("lineHeight", 20);
        marks.setProperty("wrapWidth", width);
        marks.setProperty("marks", QVariantList{QVariantMap{{"start", start}, {"length", length}}});
        return marks.boxes();
    };
    EXPECT_TRUE(boxesOf(0, 0, 0).isEmpty());
    const QList<QRectF> one = boxesOf(0, 0, 3);
    ASSERT_EQ(one.size(), 1);
    EXPECT_EQ(one[0].topLeft(), QPointF(0, 0));
    const QList<QRectF> two = boxesOf(0, 4, 3);
    EXPECT_GT(two[0].left(), one[0].right());

    const qreal justTwoWords = two[0].right() + 1;
    const QList<QRectF> across = boxesOf(justTwoWords, 4, 9);
    ASSERT_EQ(across.size(), 2) << "a part that goes on in the next line";
    EXPECT_EQ(across[0].left(), two[0].left());
    EXPECT_EQ(across[1].topLeft(), QPointF(0, 20));
}

}  // namespace
}  // namespace tessary
