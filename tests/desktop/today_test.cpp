#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <cmath>

#include "desktop/desk_rig.h"
#include "desktop/today/today_model.h"
#include "platform/adapters/icu/icu_calendar.h"
#include "support/fakes.h"

namespace tessary {
namespace {

Date at(const std::string& text) { return *parseIso8601(text); }

/// Records written down one by one, in a zone with daylight saving. It is Saturday, 21 November, 10:30 there.
class TodaySummaryTest : public testing::Test {
protected:
    NotebookId addNotebook(const std::string& name, const std::string& color) {
        Notebook notebook;
        notebook.id = NotebookId{ids_.next()};
        notebook.name = name;
        notebook.colorHex = color;
        return put(material_.notebooks, notebook);
    }
    PageId addPage(const std::string& title, std::optional<NotebookId> notebook = {}, bool archived = false) {
        JournalEntry page;
        page.id = PageId{ids_.next()};
        page.title = title;
        page.notebookID = notebook;
        page.isArchived = archived;
        page.date = at("2026-01-01T00:00:00Z");
        return put(material_.study.pages, page);
    }
    void edit(PageId page, const std::string& when) {
        for (auto& each : material_.study.pages) {
            if (each->id != page) continue;
            JournalEntry edited = *each;
            edited.updatedAt = at(when);
            each = std::make_shared<const JournalEntry>(edited);
        }
    }
    void addNew(PageId page) { addCard(page, freshMemory(now_)); }
    /// Reviewed so long ago that this is its chance now: R = 1 / sqrt(1 + 19/81 · t / S).
    void addRated(PageId page, double recall, bool suspended = false) {
        constexpr double kStability = 4;
        const double days = kStability * 81 / 19 * (std::pow(recall, -2) - 1);
        addCard(page,
                {.phase = CardMemory::Phase::review,
                 .stability = kStability,
                 .due = at("2027-01-01T00:00:00Z"),
                 .lastReview = now_ - days * kSecondsPerDay},
                suspended);
    }
    void addExam(const std::string& title, const std::string& when, NotebookId notebook = {}) {
        Exam exam;
        exam.id = ExamId{ids_.next()};
        exam.notebookID = notebook;
        exam.title = title;
        exam.date = at(when);
        put(material_.exams, exam);
    }
    void addAnswers(int count, double seconds, ReviewLogEntry::Kind kind = ReviewLogEntry::Kind::rating) {
        for (int i = 0; i < count; ++i) {
            ReviewLogEntry entry;
            entry.kind = kind;
            entry.at = now_;
            entry.card = CardId{ids_.next()};
            entry.secondsTaken = seconds;
            material_.log.push_back(entry);
        }
    }
    void reviewOn(const std::string& when) {
        addAnswers(1, 0);
        material_.log.back().at = at(when);
    }
    TodaySummary summary() { return todaySummary(material_, calendar_, now_, {}); }

    static std::vector<std::string> titles(const auto& items) {
        std::vector<std::string> titles;
        for (const auto& item : items) titles.push_back(item.title);
        return titles;
    }

    Date now_ = at("2026-11-21T09:30:00Z");
    TodayMaterial material_;

private:
    template <class Record>
    decltype(Record::id) put(std::vector<std::shared_ptr<const Record>>& list, const Record& record) {
        list.push_back(std::make_shared<const Record>(record));
        return record.id;
    }
    void addCard(PageId page, const CardMemory& memory, bool suspended = false) {
        Flashcard card;
        card.id = CardId{ids_.next()};
        card.pageID = page;
        card.memory = memory;
        card.suspended = suspended;
        put(material_.study.cards, card);
    }

    IcuCalendar calendar_{"Europe/Berlin"};
    SequentialIds ids_;
};

TEST_F(TodaySummaryTest, WhatIsDueIsToldByNotebookMostFirst) {
    const PageId cells = addPage("Cells", addNotebook("Biology", "4F7F57"));
    const PageId limits = addPage("Limits", addNotebook("Calculus", "FFDB00"));
    const PageId waves = addPage("Waves", addNotebook("Acoustics", "34508F"));
    const PageId done = addPage("Done", addNotebook("Zoology", "34508F"));
    const PageId loose = addPage("Loose");
    for (const PageId page : {cells, limits, limits, waves, loose, loose, loose}) addNew(page);
    addRated(done, 0.9);  // comes back next year
    addNew(PageId{Uuid{{200}}});

    const TodaySummary summary = this->summary();
    EXPECT_EQ(summary.cards, 8);
    EXPECT_EQ(summary.due, 7);
    std::vector<std::string> decks;
    for (const auto& deck : summary.decks)
        decks.push_back(deck.name + " " + deck.color + " " + std::to_string(deck.due));
    EXPECT_EQ(decks, (std::vector<std::string>{"Loose pages  3", "Calculus FFDB00 2", "Acoustics 34508F 1",
                                               "Biology 4F7F57 1"}));
    EXPECT_EQ(summary.decks[0].notebook, std::nullopt);
    EXPECT_NE(summary.decks[1].notebook, std::nullopt);
}

TEST_F(TodaySummaryTest, TheWeakestPagesAreThoseLeastRemembered) {
    const NotebookId biology = addNotebook("Biology", "4F7F57");
    for (const double recall : {0.9, 0.5, 0.8, 0.6}) addRated(addPage(std::to_string(recall).substr(0, 3)), recall);
    const PageId mean = addPage("mean", biology);
    addRated(mean, 0.9);
    addRated(mean, 0.5);
    addRated(mean, 0.1, true);
    addNew(mean);
    addNew(addPage("never reviewed"));
    addRated(addPage("suspended"), 0.1, true);
    addRated(addPage("archived", biology, true), 0.1);

    const TodaySummary summary = this->summary();
    EXPECT_EQ(titles(summary.weakest), (std::vector<std::string>{"0.5", "0.6", "mean", "0.8"}));
    EXPECT_NEAR(summary.weakest[2].recall, 0.7, 1e-9);
    EXPECT_EQ(summary.weakest[2].in, biology);
    EXPECT_EQ(summary.weakest[2].notebook, "Biology");
    EXPECT_EQ(summary.weakest[0].notebook, "Loose pages");
    EXPECT_EQ(summary.weakest[0].color, "");
}

TEST_F(TodaySummaryTest, RecentPagesAreThoseEditedLast) {
    edit(addPage("old"), "2026-11-01T00:00:00Z");
    edit(addPage("last"), "2026-11-21T09:00:00Z");
    edit(addPage("archived", {}, true), "2026-11-21T09:10:00Z");
    addPage("made in January");
    edit(addPage("yesterday"), "2026-11-20T09:00:00Z");
    edit(addPage("October"), "2026-10-21T09:00:00Z");
    EXPECT_EQ(titles(summary().recent), (std::vector<std::string>{"last", "yesterday", "old", "October"}));
}

TEST_F(TodaySummaryTest, ExamsAreCountedInDaysOfTheCalendar) {
    struct Case {
        const char* when;
        int days;  ///< -1: it is not told of
    };
    for (const Case& one : {
             Case{"2026-11-20T22:59:00Z", -1},   // the last minute of yesterday
             Case{"2026-11-20T23:00:00Z", 0},    // over, and still today's
             Case{"2026-11-21T22:59:00Z", 0},    //
             Case{"2026-11-21T23:00:00Z", 1},    // 0:00 tomorrow, though not in Greenwich
             Case{"2027-03-28T21:59:00Z", 127},  // 23:59, after a day of 23 hours has begun
             Case{"2027-03-28T22:00:00Z", 128},
         }) {
        material_.exams.clear();
        addExam("Midterm", one.when);
        const auto exams = summary().exams;
        EXPECT_EQ(exams.empty() ? -1 : exams[0].days, one.days) << one.when;
    }
}

TEST_F(TodaySummaryTest, TheNearestExamsAreShown) {
    const NotebookId biology = addNotebook("Biology", "4F7F57");
    for (const char* const day : {"2026-12-24", "2026-11-22", "2026-11-01", "2026-12-01", "2026-11-30"})
        addExam(day, day + std::string("T12:00:00Z"), biology);
    const auto exams = summary().exams;
    EXPECT_EQ(titles(exams), (std::vector<std::string>{"2026-11-22", "2026-11-30", "2026-12-01"}));
    EXPECT_EQ(exams[0].notebook, "Biology");
    EXPECT_EQ(exams[0].color, "4F7F57");
}

TEST_F(TodaySummaryTest, TheWeekAndTheStreakComeFromTheLog) {
    for (const char* const when :
         {"2026-10-23T12:00:00Z", "2026-10-24T12:00:00Z", "2026-10-25T22:30:00Z", "2026-10-26T12:00:00Z",
          "2026-11-14T22:59:00Z", "2026-11-17T12:00:00Z", "2026-11-19T12:00:00Z", "2026-11-20T12:00:00Z"})
        reviewOn(when);
    TodaySummary summary = this->summary();
    std::vector<std::int64_t> week;
    for (const auto& day : summary.week) week.push_back(day.reviews);
    EXPECT_EQ(week, (std::vector<std::int64_t>{0, 0, 1, 0, 1, 1, 0}));  // Sunday to today
    EXPECT_EQ(summary.week.back().day, (CivilDay{2026, 11, 21}));
    EXPECT_EQ(summary.streak, 2);
    EXPECT_EQ(summary.longestStreak, 4);
    EXPECT_FALSE(summary.studiedToday);
    reviewOn("2026-11-21T09:00:00Z");
    summary = this->summary();
    EXPECT_EQ(summary.streak, 3);
    EXPECT_TRUE(summary.studiedToday);
}

TEST_F(TodaySummaryTest, TheTimeOfACardIsKnownFromTwentyAnswersOn) {
    addAnswers(10, 4);
    addAnswers(9, 8);
    addAnswers(30, 0);  // nobody knows how long they took
    addAnswers(30, 50, ReviewLogEntry::Kind::undo);
    EXPECT_EQ(summary().secondsPerCard, 0);
    addAnswers(1, 8);
    EXPECT_DOUBLE_EQ(summary().secondsPerCard, 6);
}

TEST_F(TodaySummaryTest, AnEmptyLibraryHasADay) {
    const TodaySummary summary = this->summary();
    EXPECT_EQ(summary.week.size(), 7U);
    EXPECT_EQ(summary.cards + summary.due + summary.streak, 0);
    EXPECT_TRUE(summary.decks.empty() && summary.weakest.empty() && summary.recent.empty() && summary.exams.empty());
}

/// The day of someone who has a notebook "Biology" with a page "Cells".
class TodayModelTest : public testing::Test, public DeskRig<> {
protected:
    void open() {
        today_.setDesk(&desk);
        shows([&] { return today_.ready(); });
    }
    /// Waits until the count tells so.
    void shows(const std::function<bool()>& isSo) { ASSERT_TRUE(QTest::qWaitFor(isSo)) << "it never did"; }
    void rate(CardId card, double daysAgo, double seconds = 0) {
        cards().rate(card, Rating::easy, desk.now() - daysAgo * kSecondsPerDay, seconds);
        ASSERT_TRUE(workspace->flush());
    }
    std::vector<int> reviewsOfTheWeek() const {
        std::vector<int> reviews;
        for (const QVariant& day : today_.week()) reviews.push_back(day.toMap()["reviews"].toInt());
        return reviews;
    }

    NotebookId notebook_ = library().addNotebook("Biology");
    PageId page_ = addPage("Cells", notebook_);
    TodayModel today_;
};

TEST_F(TodayModelTest, TellsOfTheDay) {
    const CardId known = addCard(page_, "Nucleus", "Kern");
    addCard(page_, "Wall", "Wand");
    addCard(addPage(""), "Loose", "A");
    rate(known, 1);
    Exam exam;
    exam.notebookID = notebook_;
    exam.title = "Midterm";
    exam.date = desk.now() + kSecondsPerDay;
    ASSERT_TRUE(library().addExam(exam));
    EXPECT_FALSE(today_.ready());
    open();

    EXPECT_EQ(today_.date(), "Saturday, 21 November");
    EXPECT_TRUE(today_.line().startsWith("“Midterm” is tomorrow.")) << today_.line().toStdString();
    EXPECT_EQ(today_.reaction(), "cur");
    EXPECT_TRUE(today_.hasCards());
    EXPECT_EQ(today_.due(), 2);
    EXPECT_EQ(today_.dueTime(), "") << "a single answer tells nothing";
    const auto inList = [](const QVariantList& list, int at, const char* key) { return list[at].toMap()[key]; };
    EXPECT_EQ(inList(today_.decks(), 0, "name"), "Biology");
    EXPECT_EQ(inList(today_.decks(), 0, "notebookId"), toQml(notebook_));
    EXPECT_EQ(inList(today_.decks(), 1, "notebookId"), "loose");
    EXPECT_EQ(inList(today_.weakest(), 0, "pageId"), toQml(page_));
    EXPECT_NEAR(inList(today_.weakest(), 0, "recall").toDouble(), 0.99, 0.01);
    EXPECT_EQ(inList(today_.exams(), 0, "when"), "Sun 22 Nov");
    EXPECT_EQ(inList(today_.exams(), 0, "ahead"), "tomorrow");
    ASSERT_EQ(today_.recent().size(), 2);
    for (const QVariant& page : today_.recent()) {
        const bool loose = page.toMap()["place"] == "loose";
        EXPECT_EQ(page.toMap()["title"], loose ? "Untitled" : "Cells");
        EXPECT_EQ(page.toMap()["color"] == "", loose);
    }
    EXPECT_EQ(reviewsOfTheWeek(), (std::vector<int>{0, 0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(inList(today_.week(), 6, "name"), "Saturday");
    EXPECT_EQ(inList(today_.week(), 6, "today"), true);
    EXPECT_EQ(inList(today_.week(), 5, "today"), false);
    EXPECT_EQ(today_.streakTitle(), "1 day");
    EXPECT_EQ(today_.streakDetail(), "");
}

TEST_F(TodayModelTest, FollowsARatingWithItsGreeting) {
    const CardId card = addCard(page_, "Nucleus", "Kern");
    rate(card, 40);  // and a day on its own, long ago
    open();
    EXPECT_EQ(today_.due(), 1);
    EXPECT_EQ(today_.line(), "1 card waits for you.");
    EXPECT_EQ(today_.reaction(), "wave");
    EXPECT_EQ(today_.streakTitle(), "Your streak starts with one card");
    EXPECT_EQ(today_.streakDetail(), "Best 1");
    const double before = today_.weakest()[0].toMap()["recall"].toDouble();

    rate(card, 0);
    shows([&] { return today_.due() == 0; });
    EXPECT_EQ(today_.line(), "All done for today.");
    EXPECT_EQ(today_.reaction(), "win");
    EXPECT_EQ(reviewsOfTheWeek().back(), 1);
    EXPECT_EQ(today_.streakTitle(), "1 day");
    EXPECT_GT(today_.weakest()[0].toMap()["recall"].toDouble(), before);
    library().deleteNotebook(notebook_, PagesOfNotebook::goToTrash);
    shows([&] { return !today_.hasCards(); });
    EXPECT_TRUE(today_.recent().isEmpty());
}

TEST_F(TodayModelTest, TheTimeThatIsDueFollowsTheAnswersGiven) {
    for (int i = 0; i < 20; ++i) rate(addCard(page_, "Q" + std::to_string(i), "A"), 2, 15);
    open();
    EXPECT_EQ(today_.dueTime(), "") << "nothing is due";
    struct Case {
        int due;
        const char* time;
    };
    int due = 0;
    for (const Case& one : {Case{1, "about a minute"}, Case{5, "about a minute"}, Case{6, "about 2 minutes"},
                            Case{12, "about 3 minutes"}}) {
        for (; due < one.due; ++due) addCard(page_, "New " + std::to_string(due), "A");
        shows([&] { return today_.due() == one.due; });
        EXPECT_EQ(today_.dueTime(), one.time) << one.due;
    }
}

TEST_F(TodayModelTest, IsGoneWhileItCounts) {
    auto gone = std::make_unique<TodayModel>();
    gone->setDesk(&desk);
    gone.reset();
    open();
    EXPECT_FALSE(today_.hasCards());
}

}  // namespace
}  // namespace tessary
