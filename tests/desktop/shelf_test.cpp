#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtTest/QSignalSpy>
#include <filesystem>
#include <iostream>

#include "desktop/shelf/notebook_draft.h"
#include "platform/adapters/qt/qt_main_loop.h"

namespace tessary {
namespace {

std::optional<std::string> noEnvironment(std::string_view) { return std::nullopt; }

/// The shelf on a library of its own, with real files. Changes arrive through the event loop.
class ShelfTest : public testing::Test {
protected:
    ShelfTest() {
        shelf_.setDesk(&desk_);
        QObject::connect(&desk_, &Desk::refused, &desk_, [this](const QString& sentence) { refused_ = sentence; });
    }
    ~ShelfTest() override {
        EXPECT_TRUE(workspace_->close());
        std::filesystem::remove_all(home_);
    }

    static std::filesystem::path makeHome() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tessary-shelf-XXXXXX").string();
        return mkdtemp(pattern.data());
    }

    /// Made at the fixed time plus `age` seconds.
    NotebookId addNotebook(const std::string& name, double age) {
        Notebook notebook;
        notebook.name = name;
        notebook.createdAt = desk_.now() + age;
        return desk_.library().addNotebook(notebook);
    }
    PageId addPage(std::optional<NotebookId> notebook, int cards) {
        JournalEntry page;
        page.notebookID = notebook;
        const PageId id = *desk_.library().addPage(page);
        CardContent content;
        content.front = "Question";
        content.back = "Answer";
        desk_.cards().addCards(id, std::vector<CardContent>(static_cast<std::size_t>(cards), content), desk_.now());
        return id;
    }
    static void settle() { QCoreApplication::processEvents(); }

    QVariant at(int row, ShelfModel::Role role) const { return shelf_.data(shelf_.index(row), role); }
    QStringList names() const {
        QStringList names;
        for (int row = 0; row < shelf_.rowCount(); ++row) names.append(at(row, ShelfModel::NameRole).toString());
        return names;
    }

    std::filesystem::path home_ = makeHome();
    AppPaths paths_ = *portablePaths(home_, PosixFileSystem());
    SystemPorts ports_{paths_, parseIso8601("2026-11-21T09:30:00Z"), std::cerr};
    QtMainLoop loop_;
    std::unique_ptr<Workspace> workspace_ =
        std::move(*Workspace::open(paths_, ports_.forWorkspace(noEnvironment, loop_), WorkspaceUse::change));
    AISystem ai_{{.files = ports_.files, .ids = ports_.ids, .text = ports_.text}, noEnvironment};
    Desk desk_{*workspace_, ports_, loop_, ai_};
    ShelfModel shelf_;
    QString refused_;
};

TEST_F(ShelfTest, PinnedNotebooksStandFirstThenTheOneOpenedLast) {
    const NotebookId old = addNotebook("Old", -300);
    addNotebook("Newer", -200);
    const NotebookId pinned = addNotebook("Pinned", -400);
    shelf_.setPinned(toQml(pinned), true);
    settle();
    EXPECT_EQ(names(), QStringList({"Pinned", "Newer", "Old"}));
    shelf_.noteOpened(toQml(old));
    settle();
    EXPECT_EQ(names(), QStringList({"Pinned", "Old", "Newer"}));
}

TEST_F(ShelfTest, CountsPagesAndWaitingCardsWhereTheyAre) {
    const NotebookId biology = addNotebook("Biology", -1);
    addNotebook("Empty", -2);
    addPage(biology, 3);
    const PageId gone = addPage(biology, 5);
    ASSERT_TRUE(desk_.library().deletePage(gone));
    desk_.cards().setSuspended(desk_.cards().cards()[0].id, true);
    settle();
    EXPECT_EQ(names(), QStringList({"Biology", "Empty"}));  // no loose pages, so nothing stands for them
    EXPECT_EQ(at(0, ShelfModel::DueRole).toInt(), 2);
    EXPECT_EQ(shelf_.summary(), "2 notebooks · 1 page · 3 cards");

    addPage(std::nullopt, 1);
    settle();
    ASSERT_EQ(shelf_.rowCount(), 3);
    EXPECT_TRUE(at(2, ShelfModel::IsLooseRole).toBool());
    EXPECT_EQ(at(2, ShelfModel::NotebookIdRole), "loose");
    EXPECT_EQ(at(2, ShelfModel::DueRole).toInt(), 1);
    EXPECT_EQ(shelf_.dueTitle(), "3 cards are due");
    EXPECT_EQ(shelf_.dueDetail(), "Biology 2, Loose pages 1");
}

TEST_F(ShelfTest, RefreshesTheRowThatChangedAndNoOther) {
    addNotebook("A", -1);
    const NotebookId b = addNotebook("B", -2);
    addNotebook("C", -3);
    settle();
    QSignalSpy changed(&shelf_, &ShelfModel::dataChanged);
    QSignalSpy reset(&shelf_, &ShelfModel::modelReset);
    QSignalSpy inserted(&shelf_, &ShelfModel::rowsInserted);
    QSignalSpy removed(&shelf_, &ShelfModel::rowsRemoved);
    addPage(b, 2);
    settle();
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 1);
    shelf_.remove(toQml(b), true);
    settle();
    EXPECT_EQ(names(), QStringList({"A", "C"}));
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(inserted.size() + reset.size(), 0);
}

TEST_F(ShelfTest, PagesOfADeletedNotebookBecomeLooseOrGoToTheTrash) {
    const NotebookId kept = addNotebook("Kept pages", -1);
    const NotebookId trashed = addNotebook("Trashed pages", -2);
    addPage(kept, 0);
    addPage(trashed, 0);
    addPage(trashed, 0);
    EXPECT_TRUE(shelf_.remove(toQml(kept), false));
    EXPECT_TRUE(shelf_.remove(toQml(trashed), true));
    settle();
    ASSERT_EQ(shelf_.rowCount(), 1);
    EXPECT_TRUE(at(0, ShelfModel::IsLooseRole).toBool());
    EXPECT_EQ(at(0, ShelfModel::PagesRole).toInt(), 1);
    EXPECT_EQ(desk_.library().trash().size(), 2U);
}

TEST_F(ShelfTest, ADraftMakesANotebookAndRestylesItWithoutLosingTheRest) {
    NotebookDraft draft;
    draft.setProperty("shelf", QVariant::fromValue(&shelf_));
    draft.begin("");
    EXPECT_FALSE(draft.canSave());  // it has no name yet
    draft.setProperty("name", " Physics ");
    draft.setProperty("pattern", "waves");
    draft.setProperty("color", "4f7f57");
    const QString id = draft.save();
    settle();
    ASSERT_EQ(names(), QStringList({"Physics"}));
    EXPECT_EQ(at(0, ShelfModel::ColorRole), "#4F7F57");
    shelf_.setPinned(id, true);

    draft.begin(id);
    draft.setProperty("subtitle", "Year 2");
    draft.setProperty("color", "#12345");
    EXPECT_FALSE(draft.canSave());
    EXPECT_EQ(draft.shownColor(), "#4F7F57");
    EXPECT_EQ(draft.save(), "");
    draft.setProperty("color", "#123456");
    EXPECT_EQ(draft.save(), id);
    settle();
    const Notebook& saved = *desk_.library().notebooks().find(fromQml<NotebookId>(id));
    EXPECT_EQ(saved.colorHex, "123456");
    EXPECT_EQ(saved.subtitle, "Year 2");
    EXPECT_EQ(saved.pattern, CoverPattern::waves);
    EXPECT_TRUE(saved.isPinned);
}

TEST_F(ShelfTest, ALookOfAnotherProgramStaysUsable) {
    Notebook odd;
    odd.name = "Odd";
    odd.colorHex = "sunset";
    odd.accentHex = "?";
    const QString id = toQml(desk_.library().addNotebook(odd));
    settle();
    EXPECT_EQ(at(0, ShelfModel::ColorRole), "#FFDB00");
    EXPECT_EQ(at(0, ShelfModel::AccentRole), "");
    EXPECT_TRUE(shelf_.restyle(id, {{"material", "velvet"}, {"labelStyle", "embossed"}}));
    EXPECT_EQ(desk_.library().notebooks().find(fromQml<NotebookId>(id))->material, CoverMaterial::classic);
    EXPECT_EQ(desk_.library().notebooks().find(fromQml<NotebookId>(id))->labelStyle, CoverLabelStyle::embossed);
}

TEST_F(ShelfTest, TellsWhatIsRefused) {
    const QString gone = toQml(NotebookId{ports_.ids.next()});
    EXPECT_FALSE(shelf_.rename(gone, "Name"));
    EXPECT_EQ(refused_, "There is no such notebook.");
    refused_.clear();
    EXPECT_FALSE(shelf_.remove(gone, false));
    EXPECT_EQ(refused_, "There is no such notebook.");
}

}  // namespace
}  // namespace tessary
