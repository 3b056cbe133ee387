#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include "desktop/desk_rig.h"
#include "desktop/shell/notebook_accent.h"
#include "desktop/shell/window_memory.h"

namespace tessary {
namespace {

TEST(WindowPlacementTest, IsReadAsItIsWritten) {
    for (const WindowPlacement& placement : {
             WindowPlacement{.size = {1280, 800}, .position = {}, .isMaximized = false},
             WindowPlacement{.size = {900, 600}, .position = QPoint(60, 40), .isMaximized = true},
             WindowPlacement{.size = {900, 600}, .position = QPoint(-1900, 0), .isMaximized = false},
             WindowPlacement{.size = {900, 600}, .position = {}, .isMaximized = true},
         }) {
        EXPECT_EQ(WindowPlacement::parse(placement.toText()), placement) << placement.toText().toStdString();
    }
    for (const char* const text : {"", "1280", "1280x", "x800", "1280x800+1", "1280x800 maximised", "-1x5", "axb",
                                   "1280x800+60+40 maximized!", "9999999999x1"}) {
        EXPECT_EQ(WindowPlacement::parse(text), std::nullopt) << text;
    }
}

TEST(WindowPlacementTest, NoWindowIsOutOfReach) {
    const QList<QRect> screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 700}};
    struct Case {
        const char* kept;
        const char* shown;
    };
    for (const auto& [kept, shown] : {
             Case{"1280x800+60+40", "1280x800+60+40"},
             Case{"1280x800", "1280x800"},
             Case{"1280x800+1800+40", "1280x800+1800+40"},
             Case{"1280x800+1900+10", "1280x700+1900+10"},
             Case{"1280x800+4000+40 maximized", "1280x800 maximized"},
             Case{"1280x800-1270+40", "1280x800"},
             Case{"1280x800+60-20", "1280x800"},
             Case{"1280x800+60+1070", "1280x800"},
             Case{"5000x4000", "1920x1080"},
         }) {
        EXPECT_EQ(WindowPlacement::parse(kept)->fittedTo(screens).toText().toStdString(), shown) << kept;
    }
}

/// One window after another on one library.
class WindowMemoryTest : public testing::Test, public DeskRig<> {
protected:
    struct Opened {
        explicit Opened(Desk& desk) {
            memory.setProperty("desk", QVariant::fromValue(&desk));
            memory.setProperty("navigator", QVariant::fromValue(&navigator));
            window.setMinimumSize({300, 200});
            window.resize(640, 480);
            memory.restore(&window);
            QCoreApplication::processEvents();
        }
        [[nodiscard]] std::string spot() const {
            return QStringList{navigator.screen(), navigator.place(), navigator.page()}
                .join(' ')
                .trimmed()
                .toStdString();
        }
        QQuickWindow window;
        Navigator navigator;
        WindowMemory memory;
    };

    [[nodiscard]] QString kept() const { return toQml(ports.settings.text("tessary.window").value_or("")); }
};

TEST_F(WindowMemoryTest, AWindowComesBackWhereItWasAndAsItWas) {
    WindowPlacement before{.size = {500, 400}, .position = {}, .isMaximized = true};
    {
        Opened first(desk);
        EXPECT_EQ(first.window.size(), QSize(640, 480)) << "nothing is known yet";
        EXPECT_TRUE(first.window.isVisible());
        first.window.setGeometry(30, 50, 500, 400);
        QCoreApplication::processEvents();
        EXPECT_EQ(kept(), "") << "nothing is written while it moves";
        before.position = first.window.framePosition();
        first.memory.setProperty("sidebarFolded", true);
        first.memory.store();
    }
    {
        Opened second(desk);
        EXPECT_EQ(second.window.geometry(), QRect(30, 50, 500, 400));
        EXPECT_TRUE(second.memory.property("sidebarFolded").toBool());
        second.window.showMaximized();
        QCoreApplication::processEvents();
        ASSERT_GT(second.window.width(), 500);
        second.memory.store();
    }
    EXPECT_EQ(kept().toStdString(), before.toText().toStdString()) << "its size from before";
    Opened third(desk);
    EXPECT_EQ(third.window.visibility(), QWindow::Maximized);
    ASSERT_TRUE(ports.settings.setText("tessary.window", "10x10+0+0"));
    EXPECT_EQ(Opened(desk).window.size(), QSize(300, 200)) << "never smaller than it can be used";
}

TEST_F(WindowMemoryTest, TheLastPlaceIsShownAgainAsFarAsItIsThere) {
    const NotebookId notebook = library().addNotebook("Botany");
    const PageId page = addPage("Moss", notebook);
    const std::string inNotebook = "pages " + notebook.toString();
    {
        Opened first(desk);
        EXPECT_EQ(first.spot(), "today");
        first.navigator.openPage(toQml(notebook), toQml(page));
        first.navigator.openReview("");
        first.memory.store();
    }
    {
        Opened second(desk);
        EXPECT_EQ(second.spot(), inNotebook + " " + page.toString()) << "a review is not come back to";
        EXPECT_FALSE(second.navigator.canGoBack());
    }
    ASSERT_TRUE(library().deletePage(page));
    EXPECT_EQ(Opened(desk).spot(), inNotebook);
    ASSERT_TRUE(library().deleteNotebook(notebook, PagesOfNotebook::becomeLoose));
    EXPECT_EQ(Opened(desk).spot(), "today");
    for (const char* const nonsense : {"review", "pages", "shelf all", "cellar x y", "  "}) {
        ASSERT_TRUE(ports.settings.setText("tessary.lastPlace", nonsense));
        EXPECT_EQ(Opened(desk).spot(), "today") << nonsense;
    }
}

TEST_F(WindowMemoryTest, TheAccentIsThatOfTheNotebookShown) {
    Notebook botany;
    botany.name = "Botany";
    botany.colorHex = "2E7D32";
    const NotebookId notebook = library().addNotebook(botany);
    const PageId inside = addPage("Moss", notebook);
    const PageId loose = addPage("Loose");
    NotebookAccent accent;
    accent.setDesk(&desk);
    const auto at = [&](const QString& place, const QString& page) {
        accent.setProperty("place", place);
        accent.setProperty("page", page);
        return accent.known() ? accent.color().name().toStdString() : "none";
    };
    EXPECT_EQ(at("", ""), "none");
    EXPECT_EQ(at("all", ""), "none");
    EXPECT_EQ(at(toQml(notebook), ""), "#2e7d32");
    EXPECT_EQ(at("all", toQml(inside)), "#2e7d32");
    EXPECT_EQ(at("all", toQml(loose)), "none");
    botany = *library().notebooks().find(notebook);
    botany.colorHex = "C62828";
    ASSERT_TRUE(library().updateNotebook(botany));
    EXPECT_EQ(at("", toQml(inside)), "#c62828");
}

}  // namespace
}  // namespace tessary
