#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QDesktopServices>
#include <QtGui/QTextBlock>
#include <QtTest/QSignalSpy>
#include <fstream>

#include "desktop/desk_rig.h"
#include "desktop/pages/move_targets.h"
#include "desktop/pages/page_attachments.h"
#include "desktop/pages/page_listing.h"
#include "desktop/pages/page_model.h"
#include "desktop/pages/page_outline.h"
#include "desktop/pages/page_tags.h"
#include "desktop/pages/page_tree_model.h"
#include "support/virtual_loop.h"

namespace tessary {
namespace {

void settle() { QCoreApplication::processEvents(); }

/// The pages of a library, with what the window would say of what is done to them.
class PagesTest : public testing::Test {
protected:
    PagesTest() {
        tree_.setDesk(&rig_.desk);
        page_.setDesk(&rig_.desk);
        QObject::connect(&rig_.desk, &Desk::refused, [this](const QString& sentence) { said_ = sentence; });
        QObject::connect(&rig_.desk, &Desk::undoable, [this](const QString& sentence) { said_ = sentence; });
    }

    /// Made at the fixed time plus `age` seconds, so that the order is known.
    QString add(const std::string& title, double age = 0, const QString& parent = {}) {
        JournalEntry page;
        page.title = title;
        page.date = rig_.desk.now() + age;
        if (!parent.isEmpty()) page.parentID = fromQml<PageId>(parent);
        return toQml(rig_.library().addPage(page).value());
    }
    const JournalEntry& at(const QString& id) { return *rig_.library().entries().find(fromQml<PageId>(id)); }
    QString parentOf(const QString& id) { return at(id).parentID ? toQml(*at(id).parentID) : QString(); }

    /// "A", "> B" for a subpage, "*" behind a pinned one.
    QStringList lines() {
        settle();
        QStringList lines;
        for (int row = 0; row < tree_.rowCount(); ++row) {
            const QModelIndex index = tree_.index(row);
            const QString depth(tree_.data(index, PageTreeModel::DepthRole).toInt(), '>');
            const QString mark = tree_.data(index, PageTreeModel::PinnedRole).toBool() ? "*" : "";
            lines.append(depth + tree_.data(index, PageTreeModel::TitleRole).toString() + mark);
        }
        return lines;
    }

    DeskRig<> rig_;
    PageTreeModel tree_;
    PageModel page_;
    QString said_;
};

TEST_F(PagesTest, PagesMoveWithWhatStandsUnderThemAndBack) {
    const NotebookId notebook = rig_.library().addNotebook("Biology");
    const QString a = add("A", -1);
    const QString b = add("B", -2, a);
    const QString c = add("C", -3, b);
    const QString d = add("D", -4);
    tree_.setParentOf(b, d);
    EXPECT_EQ(said_, "Moved under “D”");
    EXPECT_EQ(lines(), QStringList({"A", "D", ">B", ">>C"}));
    rig_.desk.undo();
    EXPECT_EQ(lines(), QStringList({"A", ">B", ">>C", "D"}));
    rig_.desk.undo();  // an offer holds once
    EXPECT_EQ(parentOf(b), a);

    tree_.moveToNotebook(a, toQml(notebook));
    EXPECT_EQ(said_, "Moved to the top level of “Biology”");
    EXPECT_EQ(at(c).notebookID, notebook);
    tree_.setParentOf(b, "");
    EXPECT_EQ(lines(), QStringList({"A", "B", ">C", "D"}));
    EXPECT_EQ(at(b).notebookID, notebook);
    tree_.moveToNotebook(b, "loose");
    EXPECT_EQ(said_, "Moved to the loose pages");
    EXPECT_EQ(at(c).notebookID, std::nullopt);
}

TEST_F(PagesTest, RefusesWhatWouldStandInsideItself) {
    const QString a = add("A", -1);
    const QString b = add("B", -2, a);
    const QString c = add("C", -3, b);
    struct Case {
        QString page;
        QString parent;
        bool allowed;
    };
    for (const Case& each : {Case{a, a, false}, Case{a, c, false}, Case{c, a, true}, Case{c, b, true},
                             Case{b, "", true}, Case{a, toQml(PageId{rig_.ports.ids.next()}), false}}) {
        EXPECT_EQ(tree_.canStandUnder(each.page, each.parent), each.allowed);
    }
    for (const QString& parent : {a, b, c}) {
        said_.clear();
        tree_.setParentOf(a, parent);
        EXPECT_EQ(said_, "A page cannot stand inside itself.");
    }
    EXPECT_EQ(lines(), QStringList({"A", ">B", ">>C"}));
}

TEST_F(PagesTest, MovesInUnderThePageAboveAndOutAgain) {
    const QString a = add("A", -1);
    add("B", -2, a);
    const QString c = add("C", -3);
    tree_.setExpanded(a, false);
    tree_.moveIn(a);
    EXPECT_EQ(said_, "There is no page above it that it could go under.");
    tree_.moveIn(c);
    EXPECT_EQ(lines(), QStringList({"A", ">B", ">C"}));  // unfolded, so that it is seen
    tree_.moveIn(c);
    EXPECT_EQ(lines(), QStringList({"A", ">B", ">>C"}));
    tree_.moveOut(c);
    EXPECT_EQ(lines(), QStringList({"A", ">B", ">C"}));
    tree_.moveOut(c);
    tree_.moveOut(c);
    EXPECT_EQ(said_, "It is a top-level page already.");
    EXPECT_EQ(lines(), QStringList({"A", ">B", "C"}));
}

TEST_F(PagesTest, SortsAsTheSettingsSayWithPinnedPagesFirst) {
    PageListing listing;
    listing.setDesk(&rig_.desk);
    const QString m = add("m", -3);
    add("Z", -2);
    const QString a = add("a", -1);
    rig_.ports.clock = ProgramClock(rig_.desk.now() + 60);
    page_.setPageId(m);
    page_.setTitle("M");
    tree_.setPinned(a, true);
    struct Case {
        QString mode;
        bool newest;
        QStringList lines;
    };
    for (const Case& each : {Case{"created", true, {"a*", "Z", "M"}}, Case{"created", false, {"a*", "M", "Z"}},
                             Case{"edited", true, {"a*", "M", "Z"}}, Case{"edited", false, {"a*", "Z", "M"}},
                             Case{"title", true, {"a*", "M", "Z"}}, Case{"title", false, {"a*", "Z", "M"}}}) {
        listing.setSortMode(each.mode);
        listing.setNewestFirst(each.newest);
        EXPECT_EQ(lines(), each.lines) << each.mode.toStdString() << each.newest;
    }
    tree_.setPinned(a, false);
    EXPECT_EQ(lines(), QStringList({"Z", "M", "a"}));

    listing.setSortMode("edited");
    EXPECT_EQ(lines().last(), "M");
    rig_.ports.clock = ProgramClock(rig_.desk.now() + 60);
    JournalEntry edited = at(a);
    edited.body = "edited last";
    ASSERT_TRUE(rig_.library().updatePage(edited));
    EXPECT_EQ(lines().last(), "a");
}

TEST_F(PagesTest, TagsHaveColorsAreOfferedAndFilterTheTree) {
    const QString a = add("A", -1);
    add("B", -2);
    PageTags tags;
    tags.setDesk(&rig_.desk);
    page_.setPageId(a);
    for (const char* const tag : {"Prüfung", "exam", "next exam", " exam "}) page_.addTag(tag);
    EXPECT_EQ(page_.tagNames(), QStringList({"Prüfung", "exam", "next exam"}));
    EXPECT_EQ(tags.offers("EX", {}), QStringList({"exam", "next exam"}));
    EXPECT_EQ(tags.offers("ex", {"exam"}), QStringList({"next exam"}));
    EXPECT_EQ(tags.offers("pru", {}), QStringList({"Prüfung"}));

    QSignalSpy told(&page_, &PageModel::changed);
    settle();
    told.clear();
    tags.setColor("exam", "#3A6EA5");
    settle();
    EXPECT_FALSE(told.empty());
    EXPECT_EQ(page_.tags()[1].toMap()["color"], "#3A6EA5");
    EXPECT_EQ(rig_.library().tagColors().at("exam"), "3A6EA5");
    EXPECT_EQ(tags.all()[0].toMap()["color"], "#3A6EA5");
    EXPECT_EQ(tags.all()[0].toMap()["pages"], 1);
    ASSERT_TRUE(rig_.library().setTagColor("exam", "sunset"));
    EXPECT_EQ(tags.colorOf("exam"), "");
    tags.setColor("exam", "");
    EXPECT_TRUE(rig_.library().tagColors().empty());

    tree_.setTag("exam");
    EXPECT_EQ(lines(), QStringList({"A"}));
    EXPECT_EQ(at(tree_.addPage("")).tags, std::vector<std::string>{"exam"});
}

TEST_F(PagesTest, SaysWhenAPageExpires) {
    page_.setPageId(add("A"));
    struct Case {
        QString day;
        QString text;
        bool expired;
    };
    for (const Case& each :
         {Case{"2026-11-20", "Expired 20 Nov", true}, Case{"2026-11-21", "Page expires today", true},
          Case{"2026-11-22", "Expires tomorrow", false}, Case{"2026-12-04", "Expires 4 Dec", false},
          Case{"2027-03-28", "Expires 28 Mar 2027", false}, Case{"2031-10-27", "Expires 27 Oct 2031", false}}) {
        page_.setExpiryDay(each.day);
        EXPECT_EQ(page_.expiryText(), each.text);
        EXPECT_EQ(page_.expiryDay(), each.day);
        EXPECT_EQ(page_.expired(), each.expired);
        settle();
        EXPECT_EQ(tree_.data(tree_.index(0), PageTreeModel::ExpiredRole), each.expired);
    }
    page_.setExpiryDay("2026-13-01");
    EXPECT_EQ(page_.expiryDay(), "2031-10-27");
    EXPECT_EQ(page_.dayInWords("2026-12-04"), "Friday, 4 December 2026");
    EXPECT_EQ(page_.dayInWords("soon"), "");
    page_.expireIn(7);
    EXPECT_EQ(page_.expiryDay(), "2026-11-28");
    page_.setExpiryDay("");
    EXPECT_EQ(page_.expiryText(), "");
}

TEST_F(PagesTest, OutlineFollowsTheText) {
    const QString id = add("A");
    page_.setPageId(id);
    PageOutline outline;
    outline.setDesk(&rig_.desk);
    outline.setPageId(id);
    page_.setBody("Ä€𝄞\n## Two *words*\n```\n# no\n```\n### Three\nUnder\n-----\n# One");
    settle();
    const QString body = page_.body();
    const QStringList titles{"Two words", "Three", "Under", "One"};
    const QStringList lines{"## Two", "### Three", "Under", "# One"};
    const QList<int> depths{1, 2, 1, 0};
    ASSERT_EQ(outline.rowCount(), titles.size());
    for (int row = 0; row < outline.rowCount(); ++row) {
        const QModelIndex index = outline.index(row);
        EXPECT_EQ(outline.data(index, PageOutline::TitleRole), titles[row]);
        EXPECT_EQ(outline.data(index, PageOutline::DepthRole), depths[row]);
        const int position = outline.data(index, PageOutline::PositionRole).toInt();
        EXPECT_EQ(body.mid(position, lines[row].size()), lines[row]);
    }
    outline.setPageId("");
    EXPECT_EQ(outline.rowCount(), 0);
}

TEST_F(PagesTest, FilesAreListedOpenedAndTakenOff) {
    const auto source = rig_.home / "Slides.pdf";
    std::ofstream(source) << "%PDF-1.4 " << std::string(1991, 'x');
    JournalEntry page;
    page.title = "A";
    page.imageFilenames = {"../gone.png"};
    const QString id = toQml(rig_.library().addPage(page).value());
    PageAttachments files;
    files.setDesk(&rig_.desk);
    files.setPageId(id);
    files.attach(QUrl::fromLocalFile(toQml(source.string())));
    files.attach(QUrl::fromLocalFile(toQml(source.string())));
    std::ofstream(rig_.home / "Essay.docx") << "PK";
    files.attach(QUrl::fromLocalFile(toQml((rig_.home / "Essay.docx").string())));
    ASSERT_EQ(files.rowCount(), 2) << "twice the same, and what is no PDF";
    const auto role = [&](int row, PageAttachments::Role wanted) { return files.data(files.index(row), wanted); };
    EXPECT_EQ(role(0, PageAttachments::NameRole), "Slides.pdf");
    EXPECT_EQ(role(0, PageAttachments::DetailRole), "2.0 kB");
    EXPECT_EQ(role(1, PageAttachments::DetailRole), "Missing");
    EXPECT_EQ(role(1, PageAttachments::MissingRole), true);

    // In place of the system's programs another page takes what is opened.
    PageAttachments opened;
    opened.setDesk(&rig_.desk);
    opened.setPageId(add("Reader"));
    QDesktopServices::setUrlHandler("file", &opened, "attach");
    files.open(0);
    files.open(1);
    QDesktopServices::unsetUrlHandler("file");
    ASSERT_EQ(opened.rowCount(), 1);
    EXPECT_EQ(opened.data(opened.index(0), PageAttachments::NameRole), "Slides.pdf");
    EXPECT_EQ(said_, "“../gone.png” is no longer in the library’s folder.");

    files.remove(0);
    EXPECT_EQ(said_, "“Slides.pdf” taken off the page");
    EXPECT_EQ(files.rowCount(), 1);
    page_.setPageId(id);
    page_.setBody("written since");
    rig_.desk.undo();
    settle();
    EXPECT_EQ(files.rowCount(), 2);
    EXPECT_EQ(page_.body(), "written since");
}

TEST_F(PagesTest, MoveTargetsLeaveOutThePageAndWhatStandsUnderIt) {
    const NotebookId notebook = rig_.library().addNotebook("Biology");
    const QString a = add("A", -1);
    add("Inside", -2, a);
    const QString b = add("Bee", -3);
    tree_.moveToNotebook(b, toQml(notebook));
    MoveTargets targets;
    targets.setDesk(&rig_.desk);
    targets.setPageId(a);
    const auto titles = [&] {
        QStringList found;
        for (int row = 0; row < targets.rowCount(); ++row) {
            const QModelIndex index = targets.index(row);
            const bool isHere = targets.data(index, MoveTargets::HereRole).toBool();
            found.append(targets.data(index, MoveTargets::TitleRole).toString() + (isHere ? " here" : ""));
        }
        return found;
    };
    EXPECT_EQ(titles(), QStringList({"Biology", "Bee", "Loose pages here"}));
    targets.setFilter("BEE");
    EXPECT_EQ(titles(), QStringList({"Bee"}));
}

TEST_F(PagesTest, DeletingCanBeUndone) {
    const QString a = add("A", -1);
    add("B", -2, a);
    tree_.remove(a);
    EXPECT_EQ(said_, "Moved to the Trash with its subpage");
    EXPECT_EQ(lines(), QStringList());
    rig_.desk.undo();
    EXPECT_EQ(lines(), QStringList({"A", ">B"}));
}

TEST_F(PagesTest, RichTextStaysUntilTheTextIsAnother) {
    JournalEntry rich;
    rich.body = "text";
    rich.bodyRTF = Bytes{{1, 2}};
    const QString id = toQml(rig_.library().addPage(rich).value());
    page_.setPageId(id);
    page_.setBody("text");
    EXPECT_TRUE(at(id).bodyRTF);
    page_.setBody("texts");
    EXPECT_FALSE(at(id).bodyRTF);
}

TEST(DeskTyping, IsToldAtOnceAndThenAFewTimesASecond) {
    DeskRig<VirtualLoop> rig;
    PageModel page;
    page.setDesk(&rig.desk);
    page.setPageId(toQml(rig.addPage("Page")));
    const PageId other = rig.addPage("Other");
    settle();
    QSignalSpy told(&rig.desk, &Desk::libraryChanged);
    page.setBody("a");
    settle();
    EXPECT_EQ(told.size(), 1);
    for (const char* const text : {"ab", "abc", "abcd"}) {
        page.setBody(text);
        settle();
    }
    EXPECT_EQ(told.size(), 1);
    EXPECT_EQ(page.body(), "abcd");
    rig.loop.advance(Desk::kTypingPause);
    settle();
    EXPECT_EQ(told.size(), 2);
    page.setBody("abcde");
    settle();
    EXPECT_EQ(told.size(), 2);
    ASSERT_TRUE(rig.library().setPinned(other, true));  // no keystroke: told at once, with what waits
    settle();
    EXPECT_EQ(told.size(), 3);
    rig.loop.advance(2 * Desk::kTypingPause);
    settle();
    EXPECT_EQ(told.size(), 3);
    page.setBody("after a rest");
    settle();
    EXPECT_EQ(told.size(), 4);
}

TEST(DeskDue, FollowsTheCardsAndTheClock) {
    DeskRig<> rig;
    const PageId page = rig.addPage("Page");
    EXPECT_TRUE(rig.desk.due().empty());
    const CardId card = rig.addCard(page, "Front", "Back");
    EXPECT_EQ(rig.desk.due().at(page), 1);
    ASSERT_TRUE(rig.cards().rate(card, Rating::good, rig.desk.now()));
    EXPECT_TRUE(rig.desk.due().empty());
    rig.ports.clock = ProgramClock(rig.desk.now() + 100 * kSecondsPerDay);
    EXPECT_EQ(rig.desk.due().at(page), 1);
}

}  // namespace
}  // namespace tessary
