#include "study/study_statistics.h"

#include <cmath>

#include "study_fixture.h"

namespace tessary {
namespace {

Date at(const std::string& text) { return *parseIso8601(text); }

/// Cards and ratings written down one by one, in a zone with daylight saving; the numbers are counted by hand.
class StudyStatisticsTest : public StudyTest {
protected:
    // A Saturday, 10:30 in Berlin.
    StudyStatisticsTest() : StudyTest(at("2026-11-21T09:30:00Z")) {}

    PageId addPage(std::optional<NotebookId> notebook) {
        JournalEntry page;
        page.id = PageId{ids_.next()};
        page.notebookID = notebook;
        material_.pages.push_back(std::make_shared<const JournalEntry>(page));
        return page.id;
    }
    Flashcard card(PageId page) {
        Flashcard card;
        card.id = CardId{ids_.next()};
        card.pageID = page;
        card.memory = freshMemory(clock_.now());
        return card;
    }
    void addNew(PageId page) { material_.cards.push_back(std::make_shared<const Flashcard>(card(page))); }
    /// Rated `daysAgo`, with a memory of `stability` days.
    void addRated(PageId page, const std::string& due, double daysAgo = 1, double stability = 10,
                  bool suspended = false) {
        Flashcard rated = card(page);
        rated.suspended = suspended;
        rated.memory.phase = CardMemory::Phase::review;
        rated.memory.due = at(due);
        rated.memory.stability = stability;
        rated.memory.lastReview = clock_.now() - daysAgo * kSecondsPerDay;
        material_.cards.push_back(std::make_shared<const Flashcard>(rated));
    }
    StudyStatistics statistics(std::size_t days = 30) {
        return studyStatistics(material_, calendar_, clock_.now(), days);
    }

    void rated(const std::string& when, CardId card, Rating rating = Rating::good,
               CardMemory::Phase phase = CardMemory::Phase::review) {
        ReviewLogEntry entry;
        entry.at = at(when);
        entry.card = card;
        entry.rating = rating;
        entry.phase = phase;
        entries_.push_back(entry);
    }
    void undone(const std::string& when, CardId card) {
        rated(when, card);
        entries_.back().kind = ReviewLogEntry::Kind::undo;
    }
    ReviewHistory history() { return reviewHistory(entries_, calendar_, clock_.now()); }
    static std::int64_t reviewsOn(const ReviewHistory& history, CivilDay day) {
        for (const ReviewHistory::Day& counted : history.days) {
            if (counted.day == day) return counted.reviews;
        }
        return -1;
    }

    StudyMaterial material_;
    std::vector<ReviewLogEntry> entries_;
    NotebookId notebook_{Uuid{{7}}};
    CardId card_{Uuid{{8}}};
};

TEST_F(StudyStatisticsTest, CardsFallDueOnTheLocalDayThatHoldsTheMoment) {
    const PageId page = addPage(notebook_);
    addRated(page, "2026-11-19T12:00:00Z");
    addRated(page, "2026-11-20T22:59:59Z");  // the last second of yesterday in Berlin
    addRated(page, "2026-11-20T23:00:00Z");  // the first of today
    addRated(page, "2026-11-21T22:59:59Z");
    addRated(page, "2026-11-21T23:00:00Z");  // tomorrow, though not in Greenwich
    addRated(page, "2026-12-20T12:00:00Z");  // the last of thirty days
    addRated(page, "2026-12-20T23:30:00Z");  // one too late
    addRated(page, "2026-11-21T12:00:00Z", 1, 10, true);
    addNew(page);
    const StudyStatistics statistics = this->statistics();
    ASSERT_EQ(statistics.forecast.size(), 30U);
    EXPECT_EQ(statistics.forecast[0], 4);
    EXPECT_EQ(statistics.overdue, 2);
    EXPECT_EQ(statistics.forecast[1], 1);
    EXPECT_EQ(statistics.forecast[29], 1);
    std::int64_t sum = 0;
    for (const std::int64_t cards : statistics.forecast) sum += cards;
    EXPECT_EQ(sum, 6);
}

TEST_F(StudyStatisticsTest, TheForecastCountsDaysNotHoursWhenTheClocksAreSet) {
    clock_.set(at("2026-10-24T10:00:00Z"));  // the next day has 25 hours
    const PageId page = addPage(notebook_);
    addRated(page, "2026-10-25T22:30:00Z");  // 23:30 of that day
    addRated(page, "2026-10-25T23:00:00Z");  // 0:00 of the day after
    const StudyStatistics statistics = this->statistics(3);
    EXPECT_EQ(statistics.forecast, (std::vector<std::int64_t>{0, 1, 1}));
}

TEST_F(StudyStatisticsTest, DecksAreNotebooksAndLoosePagesAndCardsWithoutAPageCountNowhere) {
    const PageId inNotebook = addPage(notebook_);
    const PageId loose = addPage(std::nullopt);
    addPage(NotebookId{Uuid{{9}}});  // has no card, so it is no deck
    addNew(inNotebook);
    addRated(inNotebook, "2026-11-20T12:00:00Z");
    addRated(loose, "2026-12-24T12:00:00Z");
    addNew(PageId{Uuid{{200}}});
    const StudyStatistics statistics = this->statistics();
    EXPECT_EQ(statistics.total.total, 3);
    EXPECT_EQ(statistics.total.due, 2);
    ASSERT_EQ(statistics.decks.size(), 2U);
    for (const auto& [place, stats] : statistics.decks) {
        const bool isNotebook = place == ShelfItem(notebook_);
        EXPECT_EQ(stats.total, isNotebook ? 2 : 1);
        EXPECT_EQ(stats.due, isNotebook ? 2 : 0);
    }
}

// R = 1 / sqrt(1 + 19/81 · t / S), solved for t by hand.
TEST_F(StudyStatisticsTest, RecallIsCountedInTenths) {
    struct Case {
        double recall;
        std::size_t step;
    };
    const PageId page = addPage(notebook_);
    const std::vector<Case> cases{{1, 9}, {0.95, 9}, {0.901, 9}, {0.899, 8}, {0.75, 7}, {0.349, 3}, {0.05, 0}};
    std::array<std::int64_t, 10> expected{};
    for (const Case& one : cases) {
        const double stability = 4;
        addRated(page, "2026-12-01T00:00:00Z", stability * 81 / 19 * (std::pow(one.recall, -2) - 1), stability,
                 one.step == 7);  // suspended ones are remembered too
        ++expected[one.step];
    }
    addNew(page);
    EXPECT_EQ(statistics().recall, expected);
}

TEST_F(StudyStatisticsTest, AReviewBelongsToItsLocalDay) {
    rated("2026-10-24T21:59:00Z", card_);  // 23:59 on the 24th, summer time
    rated("2026-10-24T22:00:00Z", card_);  // 0:00 on the 25th
    rated("2026-10-25T22:59:00Z", card_);  // 23:59, winter time: the 25th had 25 hours
    rated("2026-10-25T23:00:00Z", card_);
    rated("2026-03-29T00:30:00Z", card_);  // the day of 23 hours
    rated("2026-03-29T21:59:00Z", card_);
    rated("2026-03-29T22:00:00Z", card_);
    const ReviewHistory history = this->history();
    EXPECT_EQ(reviewsOn(history, {2026, 10, 24}), 1);
    EXPECT_EQ(reviewsOn(history, {2026, 10, 25}), 2);
    EXPECT_EQ(reviewsOn(history, {2026, 10, 26}), 1);
    EXPECT_EQ(reviewsOn(history, {2026, 3, 29}), 2);
    EXPECT_EQ(reviewsOn(history, {2026, 3, 30}), 1);
    EXPECT_EQ(history.reviews, 7);
    EXPECT_EQ(history.activeDays, 5);
}

// Zones that set their clocks at midnight: a day may begin at 1:00, and a midnight may come twice.
TEST_F(StudyStatisticsTest, DaysWithoutAMidnightOrWithTwoAreDays) {
    struct Case {
        const char* zone;
        const char* first;  ///< moment of the day of the change
        const char* last;
        CivilDay day;
    };
    for (const Case& one : {
             Case{"America/Sao_Paulo", "2018-11-04T03:00:00Z", "2018-11-05T01:59:59Z", {2018, 11, 4}},
             Case{"Asia/Beirut", "2026-03-28T22:00:00Z", "2026-03-29T20:59:59Z", {2026, 3, 29}},
             Case{"Asia/Beirut", "2025-10-24T21:00:00Z", "2025-10-25T21:59:59Z", {2025, 10, 25}},
             Case{"America/Havana", "2025-11-02T04:00:00Z", "2025-11-03T04:59:59Z", {2025, 11, 2}},
         }) {
        const IcuCalendar calendar(one.zone);
        const Date first = at(one.first);
        const Date next = at(one.last) + 1;
        entries_.clear();
        material_ = {};
        const PageId page = addPage(notebook_);
        for (const Date moment : {first + -1, first, at(one.last), next}) {
            const std::string text = *formatIso8601(moment);
            addRated(page, text);
            rated(text, card_);
        }
        // Asked at 0:30 of the day before, a time that the day may not have.
        const Date before = first + (1800 - kSecondsPerDay);
        EXPECT_EQ(studyStatistics(material_, calendar, before, 3).forecast, (std::vector<std::int64_t>{1, 2, 1}))
            << one.zone;
        const ReviewHistory soon = reviewHistory(entries_, calendar, next);
        EXPECT_EQ(reviewsOn(soon, one.day), 2) << one.zone;
        EXPECT_EQ(soon.streak, 3) << one.zone;
        const ReviewHistory later = reviewHistory(entries_, calendar, calendar.addingDays(first, 364));
        EXPECT_EQ(reviewsOn(later, one.day), 2) << one.zone;
    }
}

TEST_F(StudyStatisticsTest, AYearBeginsOnAMondayAndEndsToday) {
    rated("2025-11-16T22:59:00Z", card_);  // Sunday: before the first week
    rated("2025-11-16T23:00:00Z", card_);  // Monday, 17 November 2025
    rated("2026-11-21T09:00:00Z", card_);
    rated("2026-11-22T09:00:00Z", card_);  // a clock that was wrong once
    const ReviewHistory history = this->history();
    ASSERT_EQ(history.days.size(), 52U * 7 + 6);
    EXPECT_EQ(history.days.front().day, (CivilDay{2025, 11, 17}));
    EXPECT_EQ(history.days.back().day, (CivilDay{2026, 11, 21}));
    EXPECT_EQ(history.days.front().reviews, 1);
    EXPECT_EQ(history.reviews, 2);
    EXPECT_EQ(historyStart(calendar_, clock_.now()), at("2025-11-16T23:00:00Z"));
}

TEST_F(StudyStatisticsTest, WhatWasTakenBackDoesNotCount) {
    const CardId other{Uuid{{9}}};
    rated("2026-11-20T09:00:00Z", card_);
    rated("2026-11-20T09:01:00Z", other);
    rated("2026-11-20T09:02:00Z", card_, Rating::again);
    undone("2026-11-20T09:03:00Z", card_);  // the second one of this card
    rated("2026-11-20T09:04:00Z", card_);
    undone("2026-11-21T08:00:00Z", other);  // a day later: the rating goes from its own day
    const ReviewHistory history = this->history();
    EXPECT_EQ(reviewsOn(history, {2026, 11, 20}), 2);
    EXPECT_EQ(reviewsOn(history, {2026, 11, 21}), 0);
    EXPECT_EQ(history.tested, 2);
    EXPECT_EQ(history.remembered, 2);
}

TEST_F(StudyStatisticsTest, AStreakLastsUntilADayIsMissed) {
    struct Case {
        std::vector<std::string> days;
        std::int64_t longest;
        std::int64_t now;
    };
    const std::vector<Case> cases{
        {{}, 0, 0},
        {{"2026-11-21"}, 1, 1},
        {{"2026-11-19", "2026-11-20"}, 2, 2},  // today is not over
        {{"2026-11-18", "2026-11-19"}, 2, 0},
        {{"2026-10-24", "2026-10-25", "2026-10-26", "2026-11-20", "2026-11-21"}, 3, 2},
    };
    for (const Case& one : cases) {
        entries_.clear();
        for (const std::string& day : one.days) rated(day + "T12:00:00Z", card_);
        EXPECT_EQ(history().longestStreak, one.longest) << one.days.size();
        EXPECT_EQ(history().streak, one.now) << one.days.size();
    }
}

TEST_F(StudyStatisticsTest, OnlyLearnedCardsOfTheLastThirtyDaysTellHowMuchIsRemembered) {
    rated("2026-10-22T21:59:00Z", card_);  // the last minute of a day too early
    rated("2026-10-22T22:00:00Z", card_, Rating::again);
    rated("2026-11-10T12:00:00Z", card_, Rating::hard);
    rated("2026-11-10T12:00:00Z", card_, Rating::again, CardMemory::Phase::learning);
    rated("2026-11-10T12:00:00Z", card_, Rating::good, CardMemory::Phase::fresh);
    rated("2026-11-21T08:00:00Z", card_, Rating::easy);
    EXPECT_EQ(history().tested, 3);
    EXPECT_EQ(history().remembered, 2);
}

TEST_F(StudyStatisticsTest, TheLogIsReadFromAMonthOn) {
    for (const char* const when : {"2026-08-31T21:59:00Z", "2026-09-01T10:00:00Z", "2026-11-21T08:00:00Z"}) {
        ReviewLogEntry entry;
        entry.at = at(when);
        entry.card = card_;
        log_.append(entry);
    }
    EXPECT_EQ(log_.read().size(), 3U);
    const auto read = log_.read(at("2026-09-20T00:00:00Z"));
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].at, at("2026-09-01T10:00:00Z"));
}

}  // namespace
}  // namespace tessary
