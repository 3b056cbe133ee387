#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>

#include "desktop/desk_rig.h"
#include "desktop/study/deck_editor.h"
#include "desktop/study/heat_map.h"
#include "desktop/study/study_model.h"
#include "desktop/study/study_values.h"

namespace tessary {
namespace {

constexpr int kLongEnough = 10000;  // milliseconds, for work on another thread

/// A notebook "Biology" with a page "Cells", and what the hub and its deck make of it.
class StudyScreensTest : public testing::Test, public DeskRig<> {
protected:
    StudyScreensTest() {
        notebook_ = library().addNotebook("Biology");
        page_ = addPage("Cells", notebook_);
        QObject::connect(&deck_, &DeckModel::done, &deck_, [this](const QString& sentence) { done_ = sentence; });
        QObject::connect(&editor_, &DeckEditor::told, &editor_, [this](const QString& sentence) { told_ = sentence; });
        editor_.setProperty("deck", QVariant::fromValue(&deck_));
    }
    /// Waits until everything that was asked for up to now is shown.
    template <class Model>
    void settle(Model& model, const std::function<bool()>& isThere) {
        QSignalSpy refreshed(&model, &Model::refreshed);
        while (!isThere()) ASSERT_TRUE(refreshed.wait(kLongEnough)) << "it never came";
    }
    void openDeck(int rows) {
        deck_.setDesk(&desk);
        deck_.setPlace(toQml(notebook_));
        settle(deck_, [&] { return deck_.ready() && deck_.count() == rows; });
    }
    void showRows(int rows) {
        settle(deck_, [&] { return deck_.count() == rows; });
    }
    QString at(int row, DeckModel::Role role) const { return deck_.data(deck_.index(row), role).toString(); }
    QStringList fronts() const {
        QStringList fronts;
        for (int row = 0; row < deck_.rowCount(); ++row) fronts.append(at(row, DeckModel::FrontRole));
        return fronts;
    }
    /// Rated well, so many days ago.
    void reviewed(CardId card, double daysAgo) {
        cards().rate(card, Rating::easy, desk.now() - daysAgo * kSecondsPerDay);
    }
    QUrl file(const std::string& name) const { return QUrl::fromLocalFile(toQml((home / name).string())); }
    void waitForFile(const std::function<void()>& start) {
        told_.clear();
        QSignalSpy told(&editor_, &DeckEditor::told);
        start();
        ASSERT_TRUE(told.wait(kLongEnough));
    }

    NotebookId notebook_;
    PageId page_;
    DeckModel deck_;
    DeckEditor editor_;
    QString done_;
    QString told_;
};

TEST_F(StudyScreensTest, TheHubTellsOfCardsAndOfWhatWasReviewed) {
    for (int i = 0; i < 3; ++i) addCard(page_, "Q" + std::to_string(i), "A");
    addCard(addPage("Loose"), "Q", "A");
    reviewed(cards().cards()[0].id, 1);
    reviewed(cards().cards()[1].id, 40);  // long overdue by now
    Exam exam;
    exam.notebookID = notebook_;
    exam.date = desk.now() + 9 * kSecondsPerDay;
    ASSERT_TRUE(library().addExam(exam));
    ASSERT_TRUE(workspace->flush());

    StudyModel study;
    const QAbstractItemModelTester tester(study.decks());
    EXPECT_FALSE(study.ready());
    study.setDesk(&desk);
    settle(study, [&] { return study.ready(); });
    EXPECT_EQ(study.summary(), "4 cards in 2 decks");
    EXPECT_EQ(study.due(), 3);
    EXPECT_EQ(study.fresh(), 2);
    EXPECT_EQ(study.overdue(), 1);
    EXPECT_EQ(study.forecast()[0], 1);
    EXPECT_EQ(study.recall(), (QList<int>{0, 0, 0, 0, 0, 0, 0, 1, 0, 1}));  // 79 % and 99 %
    EXPECT_EQ(study.heatSummary(), "2 reviews on 2 days · longest streak 1 day");
    const auto days = static_cast<int>(study.heat().size());
    EXPECT_EQ(study.heatText(days - 2), "Fri 20 Nov 2026: 1 review");
    EXPECT_EQ(study.heatText(days - 1), "Sat 21 Nov 2026: no reviews");
    EXPECT_EQ(study.heatText(days), "");
    EXPECT_EQ(study.heat()[days - 2], 4);
    const auto deck = [&](int row, StudyDecksModel::Role role) {
        return study.decks()->data(study.decks()->index(row), role);
    };
    EXPECT_EQ(deck(0, StudyDecksModel::NameRole), "Biology");
    EXPECT_EQ(deck(0, StudyDecksModel::DueRole), 2);
    EXPECT_EQ(deck(0, StudyDecksModel::ExamRole), "in 9 days");
    EXPECT_EQ(deck(1, StudyDecksModel::PlaceRole), "loose");

    QSignalSpy reset(study.decks(), &StudyDecksModel::modelReset);
    addCard(page_, "Another", "A");
    settle(study, [&] { return study.cards() == 5; });
    EXPECT_EQ(deck(0, StudyDecksModel::CardsRole), 4);
    EXPECT_EQ(reset.size(), 0);
}

TEST(StudyValues, MonthsStandWhereTheyBeginWithRoomForTheirNames) {
    ReviewHistory history;
    for (int week = 0; week < ReviewHistory::kWeeks; ++week) {
        const QDate monday = QDate(2025, 11, 24).addDays(week * 7);
        for (int day = 0; day < 7; ++day) {
            const QDate date = monday.addDays(day);
            history.days.push_back({.day = {date.year(), date.month(), date.day()}, .reviews = 0});
        }
    }
    const QVariantList months = heatMonths(history);
    ASSERT_EQ(months.size(), 12);  // that November of a single week has no room
    EXPECT_EQ(months.front().toMap()["name"], "Dec");
    EXPECT_EQ(months.front().toMap()["column"], 1);
    EXPECT_EQ(months.back().toMap()["name"], "Nov");
    int before = -3;
    for (const QVariant& month : months) {
        EXPECT_GE(month.toMap()["column"].toInt(), before + 3);
        before = month.toMap()["column"].toInt();
    }
}

TEST(StudyValues, ShadesFollowABusyDayNotTheBusiest) {
    ReviewHistory history;
    for (int i = 0; i < 20; ++i) history.days.push_back({.day = {}, .reviews = 40});
    for (const std::int64_t reviews : {0, 1, 10, 11, 30, 39, 4000})
        history.days.push_back({.day = {}, .reviews = reviews});
    EXPECT_EQ(heatLevels(history).mid(20), (QList<int>{0, 1, 1, 2, 3, 4, 4}));
}

TEST(StudyValues, ADayIsFoundWhereItIsDrawn) {
    HeatMap map;
    map.setPitch(16);
    map.setLevels(QList<int>(10, 1));
    for (int day = 0; day < 10; ++day) {
        const QPointF middle = map.squareOf(day).center();
        EXPECT_EQ(map.dayAt(middle.x(), middle.y()), day);
    }
    EXPECT_EQ(map.dayAt(20, 16 * 3 + 4), -1);  // tomorrow
    EXPECT_EQ(map.dayAt(-1, 4), -1);
    EXPECT_EQ(map.dayAt(4, 16 * 7), -1);
}

TEST_F(StudyScreensTest, ADeckIsSearchedFilteredAndFollowed) {
    addCard(page_, "Nucleus", "Kern");
    CardContent cloze;
    cloze.kind = FlashcardKind::cloze;
    cloze.front = "The {{ribosome}} makes\nproteins.";
    addCard(page_, cloze);
    addCard(addPage("Elsewhere"), "Nucleus again", "A");
    const QAbstractItemModelTester tester(&deck_);
    openDeck(2);
    EXPECT_EQ(deck_.heading(), "Biology");
    EXPECT_EQ(fronts(), (QStringList{"Nucleus", "The […] makes proteins."}));
    EXPECT_EQ(at(1, DeckModel::BackRole), "ribosome");
    EXPECT_EQ(at(0, DeckModel::PageRole), "Cells");
    EXPECT_EQ(at(0, DeckModel::DueRole), "New");
    deck_.setSearch("KERN cells");
    showRows(1);
    deck_.setSearch("");
    deck_.setKind("cloze");
    settle(deck_, [&] { return fronts() == QStringList{"The […] makes proteins."}; });
    deck_.setKind("");
    deck_.setState("flagged");
    showRows(0);
    EXPECT_EQ(deck_.total(), 2);
    deck_.flag(toQml(cards().cards()[0].id), true);
    showRows(1);
    deck_.setState("any");
    deck_.setPlace("all");
    showRows(3);
    reviewed(cards().cards()[0].id, 0);
    settle(deck_, [&] { return fronts().last() == "Nucleus"; });  // it comes back later than the new ones
    EXPECT_EQ(at(2, DeckModel::RecallRole), "100 %");
    EXPECT_TRUE(at(2, DeckModel::DueRole).startsWith("in "));
}

TEST_F(StudyScreensTest, RowsThatStayAreNotMadeAnew) {
    for (int i = 0; i < 10; ++i) addCard(page_, "Q" + std::to_string(i), "A");
    const QAbstractItemModelTester tester(&deck_);
    openDeck(10);
    QSignalSpy reset(&deck_, &DeckModel::modelReset);
    QSignalSpy removed(&deck_, &DeckModel::rowsRemoved);
    deck_.remove(toQml(cards().cards()[4].id));
    showRows(9);
    EXPECT_EQ(reset.size(), 0);
    ASSERT_EQ(removed.size(), 1);
    EXPECT_EQ(removed[0][1].toInt(), 4);
    EXPECT_EQ(removed[0][2].toInt(), 4);
    EXPECT_EQ(done_, "Card deleted.");
}

TEST_F(StudyScreensTest, WhatIsPickedIsDeletedAndComesBack) {
    for (int i = 0; i < 6; ++i) addCard(page_, "Q" + std::to_string(i), "A");
    reviewed(cards().cards()[5].id, 100);
    openDeck(6);
    EXPECT_EQ(fronts().front(), "Q5");
    const Flashcard before = cards().cards()[5];
    deck_.toggle(0);
    deck_.extendTo(2);
    deck_.toggle(1);
    ASSERT_EQ(deck_.selected(), 2);
    deck_.remove("");
    showRows(4);
    EXPECT_EQ(done_, "2 cards deleted.");
    EXPECT_EQ(deck_.selected(), 0);
    EXPECT_EQ(fronts(), (QStringList{"Q0", "Q2", "Q3", "Q4"}));
    deck_.undo();
    showRows(6);
    EXPECT_EQ(*cards().cards().find(before.id), before);
    deck_.undo();  // once is enough
    EXPECT_EQ(cards().cards().size(), 6U);
}

TEST_F(StudyScreensTest, NothingIsDoneToCardsThatAreNotShown) {
    for (int i = 0; i < 3; ++i) addCard(page_, "Q" + std::to_string(i), "A");
    openDeck(3);
    deck_.selectAll();
    deck_.setSearch("Q1");
    showRows(1);
    EXPECT_EQ(deck_.selected(), 1);
    deck_.suspend("", true);
    int suspended = 0;
    for (const Flashcard& card : cards().cards()) suspended += card.suspended ? 1 : 0;
    EXPECT_EQ(suspended, 1);
    EXPECT_EQ(done_, "Card suspended.");
}

TEST_F(StudyScreensTest, AFormWritesCardsOfEveryKind) {
    openDeck(0);
    QVariantMap draft = editor_.draft("");
    EXPECT_EQ(draft["pageId"], toQml(page_));
    EXPECT_NE(editor_.problemOf(draft), "");
    draft["front"] = "Nucleus";
    EXPECT_EQ(editor_.problemOf(draft), "The back is empty.");
    draft["back"] = " Kern ";
    EXPECT_EQ(editor_.problemOf(draft), "");
    editor_.save(draft);
    showRows(1);
    const CardId id = cards().cards()[0].id;
    EXPECT_EQ(cards().cards()[0].back, "Kern");

    draft = editor_.draft(toQml(id));
    draft["kind"] = "multipleChoice";
    draft["options"] = QStringList{"Kern", "Wand"};
    draft["correctIndex"] = 5;
    EXPECT_NE(editor_.problemOf(draft), "");
    draft["correctIndex"] = 1;
    editor_.save(draft);
    EXPECT_EQ(cards().cards().find(id)->back, "Wand");

    draft = editor_.draft(toQml(id));
    draft["kind"] = "cloze";
    draft["front"] = "No blank";
    EXPECT_NE(editor_.problemOf(draft), "");
    draft["front"] = "The {{wall}}";
    editor_.save(draft);
    const Flashcard& cloze = *cards().cards().find(id);
    EXPECT_EQ(cloze.back, "wall");
    EXPECT_TRUE(cloze.options.empty());
    EXPECT_EQ(cards().cards().size(), 1U);
}

TEST_F(StudyScreensTest, AnExportedDeckComesInAgain) {
    addCard(page_, "Tab\there", "Line\nbreak");
    CardContent choice;
    choice.kind = FlashcardKind::multipleChoice;
    choice.front = "Which?";
    choice.options = {"One", "Two"};
    choice.correctIndex = 1;
    choice.back = "Two";
    addCard(page_, choice);
    addCard(addPage("Elsewhere"), "Not ours", "A");
    openDeck(2);
    waitForFile([&] { editor_.exportTo(file("deck.txt")); });
    EXPECT_EQ(told_, "2 cards saved to deck.txt.");
    const PageId target = addPage("Copies", notebook_);
    waitForFile([&] { editor_.importFrom(file("deck.txt"), toQml(target)); });
    EXPECT_EQ(told_, "Added 2 cards.");
    showRows(4);
    std::vector<CardContent> copies;
    for (const Flashcard& card : cards().cards()) {
        if (card.pageID == target) copies.push_back(contentOf(card));
    }
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[0].front, "Tab\there");
    EXPECT_EQ(copies[0].back, "Line\nbreak");
    EXPECT_EQ(copies[1], choice);
}

TEST_F(StudyScreensTest, OnlyPickedCardsAreExported) {
    for (int i = 0; i < 3; ++i) addCard(page_, "Q" + std::to_string(i), "A");
    openDeck(3);
    deck_.toggle(1);
    waitForFile([&] { editor_.exportTo(file("one.txt")); });
    EXPECT_EQ(told_, "1 card saved to one.txt.");
    QFile written(file("one.txt").toLocalFile());
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_TRUE(written.readAll().endsWith("Q1\tA\tbasic\n"));
}

TEST_F(StudyScreensTest, AFileThatCannotBeUsedSaysWhy) {
    openDeck(0);
    waitForFile([&] { editor_.importFrom(file("missing.txt"), toQml(page_)); });
    EXPECT_EQ(told_, "Couldn't read that file.");
    QFile empty(file("empty.txt").toLocalFile());
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();
    waitForFile([&] { editor_.importFrom(file("empty.txt"), toQml(page_)); });
    EXPECT_EQ(told_, "No cards found in that file.");
    waitForFile([&] { editor_.exportTo(file("no/such/folder.txt")); });
    EXPECT_TRUE(told_.startsWith("Couldn't save the file: ")) << told_.toStdString();
}

}  // namespace
}  // namespace tessary
