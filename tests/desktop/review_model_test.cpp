#include "desktop/review/review_model.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <thread>

#include "desktop/desk_rig.h"
#include "support/loopback_server.h"
#include "support/virtual_loop.h"

namespace tessary {
namespace {

const Date kNow = *parseIso8601(DeskRig<>::kRigNow);

CardContent basic(const std::string& front, const std::string& back) {
    CardContent content;
    content.front = front;
    content.back = back;
    return content;
}

CardContent cloze(const std::string& front) {
    CardContent content = basic(front, "");
    content.kind = FlashcardKind::cloze;
    return content;
}

CardContent choice(const std::vector<std::string>& options, std::int64_t correct) {
    CardContent content = basic("Which?", options[static_cast<std::size_t>(correct)]);
    content.kind = FlashcardKind::multipleChoice;
    content.options = options;
    content.correctIndex = correct;
    return content;
}

/// A sitting on a library of its own, in the order of the cards. Time stands still.
class ReviewModelTest : public testing::Test, public DeskRig<VirtualLoop> {
protected:
    ReviewModelTest() {
        set("flashcards.shuffle", false);
        page_ = addPage("The Estates-General", library().addNotebook("Modern History"));
        review_.setDesk(&desk);
    }

    void set(const std::string& key, bool value) { EXPECT_TRUE(ports.settings.setBoolean(key, value)); }
    void setText(const std::string& key, const std::string& text) { EXPECT_TRUE(ports.settings.setText(key, text)); }
    CardId add(CardContent content) { return addCard(page_, std::move(content)); }
    const Flashcard& card(CardId id) const { return *cards().cards().find(id); }
    /// Shows the answer of each card and rates it.
    void rateAll(const std::vector<int>& ratings) {
        for (const int rating : ratings) {
            ASSERT_TRUE(review_.press(Qt::Key_Space, 0));
            ASSERT_TRUE(review_.press(Qt::Key_0 + rating, 0));
        }
    }
    void waitForTheCheck() {
        while (review_.state() == "checking") {
            loop.runReady();
            std::this_thread::yield();
        }
    }
    std::vector<int> counts() const { return {review_.newCount(), review_.learningCount(), review_.reviewCount()}; }

    ReviewModel review_;
    PageId page_;
};

TEST_F(ReviewModelTest, RatingGoesThroughTheCardsAndSumsUp) {
    CardContent first = basic("When was the oath?", "1789");
    first.sourcePage = 12;
    const CardId id = add(first);
    add(basic("Where?", "Versailles"));
    review_.start("");
    EXPECT_EQ(review_.state(), "question");
    EXPECT_EQ(review_.title(), "All due cards");
    EXPECT_EQ(review_.subtitle(), "Modern History");
    EXPECT_EQ(review_.card().place, "Modern History › The Estates-General");
    EXPECT_EQ(review_.card().source, "The Estates-General, page 12");
    EXPECT_EQ(counts(), (std::vector{2, 0, 0}));
    review_.rate(3);
    EXPECT_EQ(review_.done(), 0) << "a card is rated by its answer";

    review_.reveal();
    EXPECT_EQ(review_.state(), "answer");
    EXPECT_EQ(review_.suggested(), 3);
    QStringList labels;
    for (const QVariant& each : review_.ratings()) {
        const auto rating = each.value<RatingChoice>();
        labels.append(rating.name + " " + rating.interval);
    }
    EXPECT_EQ(labels.mid(0, 3), QStringList({"Again 1m", "Hard 6m", "Good 10m"}));
    review_.rate(1);
    EXPECT_EQ(review_.card().front, "Where?");
    EXPECT_EQ(counts(), (std::vector{1, 1, 0}));
    EXPECT_EQ(review_.total(), 3) << "a forgotten card comes back";
    rateAll({4, 4});
    EXPECT_EQ(review_.state(), "done");
    const ReviewOutcome& outcome = review_.outcome();
    EXPECT_EQ(std::tuple(outcome.cards, outcome.ratings, outcome.counts), std::tuple(2, 3, QList<int>({1, 0, 0, 2})));
    EXPECT_NEAR(outcome.remembered, 2.0 / 3, 1e-9);
    EXPECT_TRUE(outcome.next.startsWith("The next card is due in ")) << outcome.next.toStdString();
    EXPECT_FALSE(outcome.moreWaiting);
    EXPECT_EQ(card(id).memory.reps, 2);
}

TEST_F(ReviewModelTest, UndoBringsTheCardBackEvenFromTheEnd) {
    const CardId id = add(basic("a", "A"));
    add(basic("b", "B"));
    review_.start("");
    EXPECT_FALSE(review_.canUndo());
    rateAll({4, 4});
    EXPECT_EQ(review_.outcome().counts, QList<int>({0, 0, 0, 2}));
    EXPECT_TRUE(review_.press(Qt::Key_U, 0));
    EXPECT_EQ(std::pair(review_.state(), review_.card().front), std::pair(QString("question"), QString("b")));
    EXPECT_TRUE(review_.press(Qt::Key_Z, Qt::ControlModifier));
    EXPECT_EQ(review_.card().front, "a");
    EXPECT_EQ(card(id).memory, freshMemory(kNow));
    EXPECT_EQ(review_.done(), 0);
    review_.undo();
    EXPECT_EQ(review_.notice(), "There is nothing to take back.");
    review_.suspend();
    rateAll({3, 3});
    EXPECT_EQ(review_.outcome().counts, QList<int>({0, 0, 2, 0}));
    review_.undo();
    review_.undo();
    review_.undo();
    EXPECT_FALSE(card(id).suspended);
}

TEST_F(ReviewModelTest, TypedAnswersAreComparedAndSuggestARating) {
    add(cloze("The {{mitochondrion}} makes {{ATP}}."));
    add(basic("Capital of Hungary?", "Budapest"));
    review_.start("");
    review_.setTypeAnswers(true);
    EXPECT_EQ(ports.settings.boolean("flashcards.typeAnswers"), true);
    EXPECT_EQ(review_.state(), "typing");
    EXPECT_EQ(review_.card().blanks, 2);
    review_.answerTyped({"mito", "atp"});
    EXPECT_EQ(review_.state(), "answer");
    EXPECT_EQ(review_.grade().verdict, "partial");
    EXPECT_EQ(review_.grade().detail, "Missing: mitochondrion");
    EXPECT_EQ(review_.grade().typed, "mito · atp");
    EXPECT_EQ(review_.suggested(), 2);
    review_.rate(4);
    EXPECT_EQ(review_.grade(), GradeNote()) << "that of the last card is gone";
    review_.answerTyped({"budapest"});
    EXPECT_EQ(review_.grade().feedback, "Matches the expected answer.");
    EXPECT_EQ(review_.suggested(), 3);
}

TEST_F(ReviewModelTest, OptionsAreChosenByNumber) {
    add(choice({"Creating", "Joining", "Returning"}, 1));
    set("flashcards.typeAnswers", true);
    for (const auto& [key, chosen, verdict, suggested] :
         {std::tuple{Qt::Key_1, 0, "wrong", 1}, {Qt::Key_2, 1, "correct", 3}}) {
        review_.start("");
        EXPECT_EQ(review_.state(), "question") << "options are not typed";
        EXPECT_TRUE(review_.press(Qt::Key_4, 0));
        EXPECT_EQ(review_.state(), "question") << "there is no fourth option";
        review_.press(key, 0);
        EXPECT_EQ(std::tuple(review_.chosen(), review_.grade().verdict, review_.suggested()),
                  std::tuple(chosen, QString(verdict), suggested));
        EXPECT_EQ(review_.card().correctIndex, 1);
    }
}

TEST_F(ReviewModelTest, ClozeShowsBlanksThenTerms) {
    add(cloze("{{1 < 2}} & {{so on}}"));
    review_.start("");
    EXPECT_EQ(review_.card().front, "_____ & _____");
    EXPECT_EQ(review_.card().back, "1 < 2 & so on");
    const QString blank = "<u>" + QString(8, QChar::Nbsp) + "</u>";
    EXPECT_EQ(review_.card().frontRich, blank + " &amp; " + blank);
    EXPECT_EQ(review_.card().backRich, "<u>1 &lt; 2</u> &amp; <u>so on</u>");
}

TEST_F(ReviewModelTest, EditingChangesTheCardWhereItIs) {
    const CardId sentence = add(cloze("A {{leaf}}."));
    const CardId options = add(choice({"x", "y"}, 0));
    review_.start("");
    review_.reveal();
    QVariantMap draft = review_.draft();
    draft["front"] = "No blank";
    EXPECT_EQ(review_.problemOf(draft), "A cloze card needs a blank: put double braces around a term.");
    review_.edit(draft);
    EXPECT_EQ(card(sentence).front, "A {{leaf}}.");
    draft["front"] = "A green {{leaf}} and a {{stem}}.";
    draft["explanation"] = " Botany ";
    review_.edit(draft);
    EXPECT_EQ(card(sentence).back, "leaf · stem");
    EXPECT_EQ(card(sentence).explanation, "Botany");
    EXPECT_EQ(review_.state(), "answer");
    EXPECT_EQ(review_.card().back, "A green leaf and a stem.");
    review_.rate(4);
    draft = review_.draft();
    draft["options"] = QStringList({"x", "z"});
    draft["correctIndex"] = 1;
    review_.edit(draft);
    EXPECT_EQ(card(options).back, "z");
    EXPECT_EQ(review_.card().options, QStringList({"x", "z"}));
}

TEST_F(ReviewModelTest, TellsOfLeechesAndOfWhatKeysHaveDone) {
    EXPECT_TRUE(ports.settings.setInteger("flashcards.leechLapses", 1));
    for (const auto& [suspends, notice] : {std::pair{false, kLeechStaysInReview}, {true, kSuspendedAsLeech}}) {
        set("flashcards.suspendLeeches", suspends);
        const CardId id = add(basic("leech", "A"));
        cards().rate(id, Rating::easy, kNow - 80 * kSecondsPerDay);
        review_.start("");
        rateAll({1});
        EXPECT_EQ(review_.notice().toStdString(), notice);
        EXPECT_EQ(card(id).suspended, suspends);
        cards().remove(id);
    }
    const CardId id = add(basic("a", "A"));
    review_.start("");
    QStringList asked;
    QObject::connect(&review_, &ReviewModel::editAsked, &review_, [&] { asked.append("edit"); });
    QObject::connect(&review_, &ReviewModel::leaveAsked, &review_, [&] { asked.append("leave"); });
    QObject::connect(&review_, &ReviewModel::pageAsked, &review_, [&](const QString& page) { asked.append(page); });
    for (const int key : {Qt::Key_E, Qt::Key_O, Qt::Key_Escape, Qt::Key_F}) EXPECT_TRUE(review_.press(key, 0));
    EXPECT_EQ(asked, QStringList({"edit", toQml(page_), "leave"}));
    EXPECT_TRUE(card(id).flagged && review_.card().flagged);
    EXPECT_FALSE(review_.press(Qt::Key_S, Qt::ControlModifier));
    EXPECT_FALSE(review_.press(Qt::Key_X, 0));
    EXPECT_TRUE(review_.press(Qt::Key_S, 0));
    EXPECT_TRUE(card(id).suspended);
    EXPECT_EQ(review_.state(), "done");
}

TEST_F(ReviewModelTest, ALearningCardComesBackWhenItIsNear) {
    review_.start("");
    EXPECT_EQ(review_.emptyText(), "There are no cards yet. Make some from the text of a page.");
    cards().rate(add(basic("soon", "A")), Rating::again, kNow + 3600);
    review_.start("");
    EXPECT_EQ(review_.state(), "empty");
    EXPECT_EQ(review_.emptyText(), "Nothing is due now. The next card is due in 1h.");
    ports.clock = ProgramClock(kNow + 1800);
    loop.advance(1800);
    EXPECT_EQ(review_.state(), "empty");
    ports.clock = ProgramClock(kNow + 3000);
    loop.advance(1200);
    EXPECT_EQ(review_.card().front, "soon");
}

TEST_F(ReviewModelTest, ACardThatGoesElsewhereIsNotAskedAnyMore) {
    const CardId first = add(basic("a", "A"));
    add(basic("b", "B"));
    QCoreApplication::processEvents();
    review_.start(toQml(page_));
    EXPECT_EQ(review_.title(), "The Estates-General");
    review_.reveal();
    cards().remove(first);
    QCoreApplication::processEvents();
    EXPECT_EQ(std::pair(review_.state(), review_.card().front), std::pair(QString("question"), QString("b")));
    ASSERT_TRUE(library().deletePage(page_));
    QCoreApplication::processEvents();
    EXPECT_EQ(review_.state(), "done");
}

TEST_F(ReviewModelTest, TheAiJudgesWhenItIsAskedTo) {
    LoopbackServer server;
    add(basic("What is a leaf for?", "photosynthesis"));
    for (const char* key : {"flashcards.typeAnswers", "flashcards.aiGrading"}) set(key, true);
    setText("flashcards.provider", "ollama");
    setText("flashcards.ollamaURL", server.address());
    server.answerNext({.body = R"({"models":[{"name":"llama3.2:latest"}]})"});
    server.answerNext({.body = R"({"message":{"content":"{\"verdict\":\"partial\",\"score\":0.5,)"
                               R"(\"feedback\":\"Say how.\",\"missing\":[\"light\"]}"}})"});
    review_.start("");
    review_.answerTyped({"food"});
    EXPECT_EQ(review_.state(), "checking");
    waitForTheCheck();
    EXPECT_EQ(std::pair(review_.grade().feedback, review_.grade().detail),
              std::pair(QString("Say how."), QString("Missing: light")));
    EXPECT_EQ(review_.suggested(), 2);

    server.answerNext({.status = 500});
    review_.start("");
    review_.answerTyped({"food"});
    waitForTheCheck();
    EXPECT_EQ(review_.state(), "answer");
    EXPECT_EQ(review_.grade().verdict, "failed");
    EXPECT_EQ(review_.grade().feedback, "Couldn't check automatically. Compare with the answer:");
    EXPECT_EQ(review_.grade().typed, "food");

    server.setHandler(
        [](const auto&) { return LoopbackServer::Answer{.manner = LoopbackServer::Answer::Manner::hang}; });
    review_.start("");
    review_.answerTyped({"food"});
    server.waitForRequests(4);
    review_.reveal();
    EXPECT_EQ(review_.state(), "answer") << "nobody has to wait";
    loop.runReady();
    EXPECT_EQ(review_.grade(), GradeNote());
}

}  // namespace
}  // namespace tessary
