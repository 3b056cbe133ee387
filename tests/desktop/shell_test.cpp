#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include "desktop/desk/moments.h"
#include "desktop/desk_rig.h"
#include "desktop/shell/navigator.h"
#include "desktop/shell/sidebar_model.h"
#include "desktop/shell/trash_model.h"
#include "platform/adapters/icu/icu_calendar.h"

namespace tessary {
namespace {

TEST(NavigatorTest, TheWayBackLeadsPastReviewsAndPages) {
    Navigator navigator;
    QSignalSpy moved(&navigator, &Navigator::moved);
    EXPECT_FALSE(navigator.canGoBack());
    navigator.goBack();
    navigator.openToday();
    EXPECT_EQ(moved.size(), 0) << "it is there already";
    navigator.openShelf();
    navigator.openPage("all", "first");
    navigator.showPage("second");
    navigator.showPage("second");
    EXPECT_EQ(moved.size(), 3);
    navigator.openReview("second");
    EXPECT_EQ(navigator.page(), "second");
    navigator.openDeck("loose");
    EXPECT_EQ(navigator.deck(), "loose");
    EXPECT_EQ(navigator.place(), "");
    std::vector<std::string> ways;
    while (navigator.canGoBack()) {
        navigator.goBack();
        ways.push_back((navigator.screen() + " " + navigator.page()).toStdString());
    }
    EXPECT_EQ(ways, (std::vector<std::string>{"pages second", "shelf ", "today "}));
}

TEST(NavigatorTest, TheWayBackHasAnEnd) {
    Navigator navigator;
    for (int i = 0; i < 300; ++i) navigator.openPlace(QString::number(i));
    int steps = 0;
    for (; navigator.canGoBack(); ++steps) navigator.goBack();
    EXPECT_EQ(steps, 100);
    EXPECT_EQ(navigator.place(), "199");
}

TEST(EditedText, IsTheShorterTheLongerAgo) {
    const IcuCalendar berlin("Europe/Berlin");
    const Date now = *parseIso8601("2026-03-29T09:30:00Z");  // 11:30, on a day of 23 hours
    struct Case {
        const char* moment;
        const char* text;
    };
    for (const Case& one : {
             Case{"2026-03-29T09:40:00Z", "just now"},  // another computer's clock
             Case{"2026-03-29T09:29:01Z", "just now"},
             Case{"2026-03-29T09:29:00Z", "1 min ago"},
             Case{"2026-03-29T08:30:01Z", "59 min ago"},
             Case{"2026-03-29T08:30:00Z", "1 h ago"},
             Case{"2026-03-28T23:00:00Z", "10 h ago"},  // 0:00
             Case{"2026-03-28T22:59:59Z", "yesterday"},
             Case{"2026-03-27T23:00:00Z", "yesterday"},
             Case{"2026-03-27T22:59:59Z", "27 Mar"},
             Case{"2025-12-31T23:00:00Z", "1 Jan"},
             Case{"2025-12-31T22:59:59Z", "31 Dec 2025"},
         })
        EXPECT_EQ(editedText(*parseIso8601(one.moment), now, berlin).toStdString(), one.text) << one.moment;
}

/// What stands beside the screens. Changes arrive through the event loop.
class ShellTest : public testing::Test, public DeskRig<> {
protected:
    static void settle() { QCoreApplication::processEvents(); }
    void change(PageId page, const std::function<void(JournalEntry&)>& make) {
        JournalEntry changed = *library().entries().find(page);
        make(changed);
        ASSERT_TRUE(library().updatePage(changed));
    }
};

TEST_F(ShellTest, TheSidebarCountsWhatThereIs) {
    SidebarModel sidebar;
    const QAbstractItemModelTester tester(&sidebar);
    sidebar.setDesk(&desk);
    EXPECT_TRUE(sidebar.untouched());
    const NotebookId botany = library().addNotebook("Botany");
    const PageId leaves = addPage("Leaves", botany);
    const PageId loose = addPage("Loose");
    addCard(leaves, "Green?", "Yes");
    const CardId known = addCard(leaves, "Blue?", "No");
    addCard(loose, "Free?", "Yes");
    settle();
    EXPECT_FALSE(sidebar.untouched());
    EXPECT_EQ(sidebar.notebooks(), 1);
    EXPECT_EQ(sidebar.due(), 3);
    EXPECT_EQ(sidebar.favorites(), 0);
    const auto dueOfBotany = [&] { return sidebar.data(sidebar.index(0), SidebarModel::DueRole).toInt(); };
    EXPECT_EQ(dueOfBotany(), 2);

    QSignalSpy reset(&sidebar, &SidebarModel::modelReset);
    cards().rate(known, Rating::easy, desk.now());
    change(leaves, [](JournalEntry& page) { page.isFavorite = true; });
    change(loose, [](JournalEntry& page) { page.isFavorite = page.isArchived = true; });
    settle();
    EXPECT_EQ(dueOfBotany(), 1);
    EXPECT_EQ(sidebar.favorites(), 1) << "an archived one is not listed";
    EXPECT_EQ(reset.size(), 0) << "rows that stay are not made anew";
    ASSERT_TRUE(library().deletePage(loose));
    ASSERT_TRUE(library().deleteNotebook(botany, PagesOfNotebook::goToTrash));
    settle();
    EXPECT_EQ(sidebar.rowCount(), 0);
    EXPECT_EQ(sidebar.trashed(), 2);
    EXPECT_EQ(sidebar.due(), 0);
}

TEST_F(ShellTest, TheTrashListsWhatWasDeletedByItself) {
    TrashModel trash;
    const QAbstractItemModelTester tester(&trash);
    trash.setDesk(&desk);
    const PageId root = addPage("Root");
    const PageId child = addPage("Child");
    const PageId grandchild = addPage("Grandchild");
    const PageId other = addPage("");
    ASSERT_TRUE(library().setParent(child, root));
    ASSERT_TRUE(library().setParent(grandchild, child));
    ASSERT_TRUE(library().deletePage(root));
    ASSERT_TRUE(library().deletePage(other));
    settle();
    EXPECT_EQ(trash.total(), 4);
    std::map<QString, int> subpages;
    for (int row = 0; row < trash.rowCount(); ++row) {
        subpages[trash.data(trash.index(row), TrashModel::TitleRole).toString()] =
            trash.data(trash.index(row), TrashModel::SubpagesRole).toInt();
        EXPECT_EQ(trash.data(trash.index(row), TrashModel::DaysLeftRole), 30);
    }
    EXPECT_EQ(subpages, (std::map<QString, int>{{"Root", 2}, {"Untitled", 0}}));

    QString refused;
    QObject::connect(&desk, &Desk::refused, &desk, [&](const QString& sentence) { refused = sentence; });
    trash.restore(toQml(root));
    settle();
    EXPECT_EQ(trash.total(), 1);
    EXPECT_EQ(library().entries().find(grandchild)->parentID, child);
    trash.restore(toQml(root));
    EXPECT_NE(refused, "") << "it is back already";
    trash.empty();
    settle();
    EXPECT_EQ(trash.rowCount(), 0);
    EXPECT_EQ(library().entries().size(), 3U);
}

}  // namespace
}  // namespace tessary
