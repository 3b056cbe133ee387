#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>

#include "desktop/desk_rig.h"
#include "desktop/shelf/cover_painter.h"
#include "desktop/shelf/notebook_draft.h"

namespace tessary {
namespace {

/// The shelf on a library of its own. Changes arrive through the event loop.
class ShelfTest : public testing::Test, public DeskRig<> {
protected:
    ShelfTest() {
        shelf_.setDesk(&desk);
        QObject::connect(&desk, &Desk::refused, &desk, [this](const QString& sentence) { refused_ = sentence; });
    }

    /// Made at the fixed time plus `age` seconds.
    NotebookId addNotebook(const std::string& name, double age) {
        Notebook notebook;
        notebook.name = name;
        notebook.createdAt = desk.now() + age;
        return library().addNotebook(notebook);
    }
    PageId addPageOfCards(std::optional<NotebookId> notebook, int count) {
        const PageId id = addPage("", notebook);
        for (int card = 0; card < count; ++card) addCard(id, "Question " + std::to_string(card), "Answer");
        return id;
    }
    static void settle() { QCoreApplication::processEvents(); }

    QVariant at(int row, ShelfModel::Role role) const { return shelf_.data(shelf_.index(row), role); }
    QStringList names() const {
        QStringList names;
        for (int row = 0; row < shelf_.rowCount(); ++row) names.append(at(row, ShelfModel::NameRole).toString());
        return names;
    }

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
    addPageOfCards(biology, 3);
    const PageId gone = addPageOfCards(biology, 5);
    ASSERT_TRUE(library().deletePage(gone));
    cards().setSuspended(cards().cards()[0].id, true);
    settle();
    EXPECT_EQ(names(), QStringList({"Biology", "Empty"}));  // no loose pages, so nothing stands for them
    EXPECT_EQ(at(0, ShelfModel::DueRole).toInt(), 2);
    EXPECT_EQ(shelf_.summary(), "2 notebooks · 1 page · 3 cards");

    addPageOfCards(std::nullopt, 1);
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
    addPageOfCards(b, 2);
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
    addPageOfCards(kept, 0);
    addPageOfCards(trashed, 0);
    addPageOfCards(trashed, 0);
    EXPECT_TRUE(shelf_.remove(toQml(kept), false));
    EXPECT_TRUE(shelf_.remove(toQml(trashed), true));
    settle();
    ASSERT_EQ(shelf_.rowCount(), 1);
    EXPECT_TRUE(at(0, ShelfModel::IsLooseRole).toBool());
    EXPECT_EQ(at(0, ShelfModel::PagesRole).toInt(), 1);
    EXPECT_EQ(library().trash().size(), 2U);
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
    const Notebook& saved = *library().notebooks().find(fromQml<NotebookId>(id));
    EXPECT_EQ(saved.colorHex, "123456");
    EXPECT_EQ(saved.subtitle, "Year 2");
    EXPECT_EQ(saved.pattern, CoverPattern::waves);
    EXPECT_TRUE(saved.isPinned);
}

TEST_F(ShelfTest, ACoverPictureIsChosenChangedAndTakenOff) {
    const auto picture = [&](const char* name, const QColor& color) {
        const QString path = QString::fromStdString((home / name).string());
        QImage image(40, 10, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path));
        return path;
    };
    const QString red = picture("red.png", Qt::red);
    const QString blue = picture("blue.png", Qt::blue);
    NotebookDraft draft;
    draft.setProperty("shelf", QVariant::fromValue(&shelf_));
    const QString id = toQml(addNotebook("Physics", 0));
    const auto saved = [&] { return shelf_.lookOf(id)["coverImage"].toString(); };

    draft.begin(id);
    draft.chooseCoverImage(QUrl::fromLocalFile(red));
    EXPECT_EQ(draft.coverImage(), red);
    EXPECT_EQ(saved(), "");  // not before `save`
    draft.save();
    const QString copy = saved();
    EXPECT_TRUE(copy.startsWith(toQml(library().mediaFolder(MediaKind::cover).string())));
    QFile::remove(red);
    EXPECT_EQ(QImage(copy).pixelColor(0, 0), Qt::red);

    draft.begin(id);
    draft.setProperty("subtitle", "Year 2");
    draft.save();
    EXPECT_EQ(saved(), copy);  // nothing is copied anew
    draft.chooseCoverImage(QUrl::fromLocalFile(blue));
    draft.save();
    EXPECT_EQ(QImage(saved()).pixelColor(0, 0), Qt::blue);

    const QString note = QString::fromStdString((home / "note.png").string());
    QFile file(note);
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write("no picture") > 0);
    file.close();
    draft.begin(id);
    draft.chooseCoverImage(QUrl::fromLocalFile(note));
    EXPECT_EQ(refused_, "“note.png” is not a picture that can be shown.");
    EXPECT_EQ(draft.coverImage(), saved());
    draft.removeCoverImage();
    draft.save();
    EXPECT_EQ(saved(), "");
    EXPECT_FALSE(library().notebooks().find(fromQml<NotebookId>(id))->coverImageFilename);
}

TEST_F(ShelfTest, ACoverShowsTheMiddleOfItsPictureAndIsPlainWithoutIt) {
    const std::string path = (home / "wide.png").string();
    QImage image(900, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (int x = 400; x < 500; ++x) {
        for (int y = 0; y < image.height(); ++y) image.setPixelColor(x, y, Qt::green);
    }
    ASSERT_TRUE(image.save(QString::fromStdString(path)));
    CoverLook look;
    look.color = Qt::blue;
    look.labelStyle = CoverLabelStyle::embossed;
    look.imagePath = QString::fromStdString(path);
    constexpr int kWidth = 144;
    const CoverPicture cover = paintCover(look, kWidth);
    const QPoint low = QPoint(70, 170) - cover.frame.topLeft();  // below the label
    const QColor pictured = cover.image.pixelColor(low);
    EXPECT_GT(pictured.green(), 180);
    EXPECT_LT(pictured.red() + pictured.blue(), 60);

    CoverLook patterned = look;
    patterned.pattern = CoverPattern::checks;
    EXPECT_EQ(paintCover(patterned, kWidth).image, cover.image);
    std::filesystem::remove(path);
    CoverLook plain = look;
    plain.imagePath.clear();
    EXPECT_EQ(paintCover(look, kWidth).image, paintCover(plain, kWidth).image);
}

TEST_F(ShelfTest, ALookOfAnotherProgramStaysUsable) {
    Notebook odd;
    odd.name = "Odd";
    odd.colorHex = "sunset";
    odd.accentHex = "?";
    const QString id = toQml(library().addNotebook(odd));
    settle();
    EXPECT_EQ(at(0, ShelfModel::ColorRole), "#FFDB00");
    EXPECT_EQ(at(0, ShelfModel::AccentRole), "");
    EXPECT_TRUE(shelf_.restyle(id, {{"material", "velvet"}, {"labelStyle", "embossed"}}));
    EXPECT_EQ(library().notebooks().find(fromQml<NotebookId>(id))->material, CoverMaterial::classic);
    EXPECT_EQ(library().notebooks().find(fromQml<NotebookId>(id))->labelStyle, CoverLabelStyle::embossed);
}

TEST_F(ShelfTest, TellsWhatIsRefused) {
    const QString gone = toQml(NotebookId{ports.ids.next()});
    EXPECT_FALSE(shelf_.rename(gone, "Name"));
    EXPECT_EQ(refused_, "There is no such notebook.");
    refused_.clear();
    EXPECT_FALSE(shelf_.remove(gone, false));
    EXPECT_EQ(refused_, "There is no such notebook.");
}

}  // namespace
}  // namespace tessary
