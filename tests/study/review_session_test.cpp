#include "study/review_session.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <set>

#include "library/journal_store.h"
#include "study_fixture.h"

namespace tessary {
namespace {

using Fronts = std::vector<std::string>;

const Date kNow = *parseIso8601("2026-11-21T09:30:00Z");
constexpr double kMinute = kSecondsPerMinute;

class ReviewSessionTest : public StudyTest {
protected:
    ReviewSessionTest() : StudyTest(kNow) {
        EXPECT_TRUE(files_.createFolders("/library"));
        set("flashcards.shuffle", 0);
        page_ = addPage();
    }

    void set(const std::string& key, std::int64_t value) { EXPECT_TRUE(settings_.setInteger(key, value)); }
    PageId addPage(std::optional<PageId> parent = {}) {
        JournalEntry page;
        page.title = "Page";
        page.parentID = parent;
        return *library_.addPage(page);
    }
    CardId addNew(const std::string& front, std::optional<PageId> page = {}) {
        CardContent content;
        content.front = front;
        content.back = "A";
        return store_.addCards(page.value_or(page_), {content}, kNow - 100 * kSecondsPerDay).front();
    }
    /// A review that fell due `days` before `kNow`.
    CardId addDue(const std::string& front, double days, std::optional<PageId> page = {}) {
        const CardId id = addNew(front, page);
        store_.rate(id, Rating::easy, kNow - 80 * kSecondsPerDay);
        const Date due = card(id).memory.due;
        store_.undo(kNow);
        store_.rate(id, Rating::easy, kNow - 80 * kSecondsPerDay + (kNow - days * kSecondsPerDay - due));
        return id;
    }
    const Flashcard& card(CardId id) { return *store_.cards().find(id); }
    Fronts fronts(const std::vector<CardId>& ids) {
        Fronts result;
        for (const CardId id : ids) result.push_back(card(id).front);
        return result;
    }
    ReviewQueue queue(Date now = kNow, std::optional<PageId> page = {}) {
        return buildReviewQueue(store_, library_, settings_, calendar_, {page}, now);
    }
    std::optional<Date> next(Date now = kNow, std::optional<PageId> page = {}) {
        return nextReview(store_, library_, settings_, calendar_, {page}, now);
    }
    ReviewSession session(Date now = kNow, std::optional<PageId> page = {}) {
        return {store_, library_, settings_, calendar_, {page}, now};
    }
    static std::string front(const ReviewSession& session) {
        return session.current() == nullptr ? "(over)" : session.current()->front;
    }
    static std::vector<std::int64_t> remaining(const ReviewSession& session) {
        const auto [fresh, learning, review] = session.remaining();
        return {fresh, learning, review};
    }
    /// Every record, and the places taken by new cards.
    auto state() const {
        std::vector<Flashcard> cards;
        for (const Flashcard& each : store_.cards()) cards.push_back(each);
        return std::pair(std::move(cards), store_.introduced());
    }

    JournalStore library_{LibraryFolders{"/library"}, services_, queue_, StoreAccess::readWrite};
    FlashcardStore store_{"/library/flashcards.json", services_, queue_, log_, StoreAccess::readOnly};
    PageId page_;
};

TEST_F(ReviewSessionTest, NewCardsAreSpreadEvenlyAmongTheReviews) {
    for (const auto& [fresh, due, expected] : std::vector<std::tuple<int, int, std::string>>{
             {1, 9, "RRRRRNRRRR"}, {2, 6, "RRNRRRNR"}, {3, 3, "RNRNRN"}, {4, 2, "RNNRNN"}, {2, 0, "NN"}}) {
        store_.removePage(page_);
        for (int i = 0; i < fresh; ++i) addNew("N");
        for (int i = 0; i < due; ++i) addDue("R", i + 1);
        std::string order;
        for (const std::string& each : fronts(queue().main)) order += each;
        EXPECT_EQ(order, expected);
    }
}

TEST_F(ReviewSessionTest, APlaceIsAskedForAsAWhole) {
    const NotebookId notebook = library_.addNotebook("Biology");
    JournalEntry inside;
    inside.notebookID = notebook;
    const PageId parent = *library_.addPage(inside);
    inside.parentID = parent;
    addNew("in the notebook", parent);
    addNew("below", *library_.addPage(inside));
    addNew("loose");
    set("flashcards.shuffle", false);
    const auto asked = [&](const ShelfItem& place) {
        const ReviewScope scope{.page = {}, .place = place};
        return fronts(buildReviewQueue(store_, library_, settings_, calendar_, scope, kNow).main);
    };
    EXPECT_EQ(asked(notebook), (Fronts{"in the notebook", "below"}));
    EXPECT_EQ(asked(LoosePages{}), Fronts{"loose"});
    EXPECT_EQ(asked(NotebookId{Uuid{{9}}}), Fronts{});
}

TEST_F(ReviewSessionTest, LimitsTakeTheMostOverdueAndTheFirstNewCards) {
    for (const char* each : {"n1", "n2", "n3"}) addNew(each);
    for (const int days : {2, 9, 1, 5}) addDue("due " + std::to_string(days), days);
    addDue("later", -2);
    set("flashcards.newPerDay", 2);
    set("flashcards.maxReviews", 3);
    EXPECT_EQ(fronts(queue().main), (Fronts{"due 9", "n1", "due 5", "n2", "due 2"}));
    store_.rate(queue().main[1], Rating::easy, kNow);
    EXPECT_EQ(fronts(queue().main), (Fronts{"due 9", "due 5", "n2", "due 2"}));
    for (const std::int64_t absurd : {std::int64_t{-1}, std::numeric_limits<std::int64_t>::min(), std::int64_t{0}}) {
        set("flashcards.newPerDay", absurd);
        set("flashcards.maxReviews", absurd);
        EXPECT_TRUE(queue().main.empty());
    }
    set("flashcards.newPerDay", std::numeric_limits<std::int64_t>::max());
    set("flashcards.maxReviews", std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(queue().main.size(), 6U);
}

TEST_F(ReviewSessionTest, ShuffledOrderHoldsAllDayAndChangesOvernight) {
    set("flashcards.shuffle", 1);
    set("flashcards.newPerDay", 15);
    for (int i = 0; i < 30; ++i) addNew("n" + std::to_string(i));
    for (int i = 0; i < 30; ++i) addDue("r" + std::to_string(i), i + 1);
    const std::vector<CardId> morning = queue().main;
    const Date lateEvening = kNow + 13 * 3600;  // 23:30 in Berlin
    EXPECT_EQ(queue(lateEvening).main, morning);
    const std::vector<CardId> tomorrow = queue(lateEvening + 3600).main;
    EXPECT_NE(tomorrow, morning);
    EXPECT_NE(std::set(tomorrow.begin(), tomorrow.end()), std::set(morning.begin(), morning.end()));
    Fronts reviews = fronts(morning);
    std::erase_if(reviews, [](const std::string& each) { return each.starts_with('n'); });
    EXPECT_EQ(reviews.size(), 30U);
    EXPECT_FALSE(std::ranges::is_sorted(reviews));
}

TEST_F(ReviewSessionTest, ScopeIsThePageWithItsSubpages) {
    const PageId child = addPage(page_);
    const PageId grandchild = addPage(child);
    const PageId other = addPage();
    addNew("page");
    addNew("grandchild", grandchild);
    addNew("other", other);
    store_.setSuspended(addNew("suspended"), true);
    addNew("lost", PageId{Uuid{{9}}});
    EXPECT_EQ(fronts(queue().main), (Fronts{"page", "grandchild", "other"}));
    EXPECT_EQ(fronts(queue(kNow, page_).main), (Fronts{"page", "grandchild"}));
    EXPECT_EQ(fronts(queue(kNow, child).main), (Fronts{"grandchild"}));
    ASSERT_TRUE(library_.deletePage(child));
    EXPECT_EQ(fronts(queue().main), (Fronts{"page", "other"}));
    EXPECT_TRUE(queue(kNow, child).main.empty());
    EXPECT_FALSE(next(kNow, child));
}

TEST_F(ReviewSessionTest, NextReviewIsTheEarliestDueOrTheNextDayForNewCards) {
    EXPECT_FALSE(next());
    const CardId soon = addDue("soon", -2);
    addDue("later", -5);
    addNew("new");
    EXPECT_EQ(next(), kNow);
    set("flashcards.newPerDay", 1);
    store_.rate(addNew("first"), Rating::easy, kNow);
    EXPECT_EQ(next(), *parseIso8601("2026-11-21T23:00:00Z"));
    set("flashcards.newPerDay", 0);
    EXPECT_EQ(next(), card(soon).memory.due);
    EXPECT_EQ(next(kNow + 10 * kSecondsPerDay), card(soon).memory.due);
    store_.setSuspended(soon, true);
    EXPECT_GT(*next(), kNow + 3 * kSecondsPerDay);
}

TEST_F(ReviewSessionTest, ForgottenCardsComeBackWhenDueOrWhenNothingElseIsLeft) {
    for (const char* each : {"a", "b", "c", "d"}) addNew(each);
    ReviewSession session = this->session();
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{4, 0, 0}));
    session.rate(Rating::again, kNow, 1);  // a, due in a minute
    EXPECT_EQ(front(session), "b");
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{3, 1, 0}));
    session.rate(Rating::good, kNow + 30, 1);  // b, due in ten
    EXPECT_EQ(front(session), "c");
    session.rate(Rating::easy, kNow + 2 * kMinute, 1);
    EXPECT_EQ(front(session), "a");
    session.rate(Rating::good, kNow + 2 * kMinute, 1);
    EXPECT_EQ(front(session), "d");
    session.rate(Rating::easy, kNow + 3 * kMinute, 1);
    EXPECT_EQ(front(session), "b");
    session.rate(Rating::again, kNow + 3 * kMinute, 1);
    EXPECT_EQ(front(session), "b");  // due before a
    session.rate(Rating::good, kNow + 3 * kMinute, 1);
    session.rate(Rating::good, kNow + 4 * kMinute, 1);
    session.rate(Rating::good, kNow + 5 * kMinute, 1);
    EXPECT_EQ(session.current(), nullptr);
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{0, 0, 0}));
    const auto [cards, ratings, remembered, seconds, nextDue] = session.summary(kNow + 6 * kMinute);
    EXPECT_EQ(std::tuple(cards, ratings, remembered, seconds), std::tuple(4, 9, 7, 9.0));
    EXPECT_EQ(nextDue, next(kNow));
}

TEST_F(ReviewSessionTest, LearningCardsThereAtTheStartTakePartOnceTheyAreNear) {
    store_.rate(addNew("tomorrow's"), Rating::again, kNow + 5 * 3600);
    store_.rate(addNew("near"), Rating::good, kNow);
    store_.rate(addNew("due"), Rating::again, kNow - 3600);
    addNew("new");
    ReviewSession session = this->session();
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{1, 2, 0}));
    for (const char* each : {"due", "new", "near"}) {
        EXPECT_EQ(front(session), each);
        session.rate(Rating::easy, kNow, 1);
    }
    EXPECT_EQ(front(session), "(over)");
    session.refresh(kNow + 4.8 * 3600);
    EXPECT_EQ(front(session), "tomorrow's");
}

TEST_F(ReviewSessionTest, UndoGoesBackToTheFirstCardEvenAfterTheEnd) {
    for (const char* each : {"a", "b", "c"}) addNew(each);
    const auto before = state();
    ReviewSession session = this->session();
    session.rate(Rating::again, kNow, 5);
    session.suspend(kNow + 1);
    EXPECT_TRUE(store_.cards()[1].suspended);
    session.rate(Rating::easy, kNow + 2, 5);
    session.rate(Rating::easy, kNow + 3, 5);
    EXPECT_EQ(front(session), "(over)");
    for (const char* each : {"a", "c", "b", "a"}) {
        EXPECT_TRUE(session.undo(kNow + 4));
        EXPECT_EQ(front(session), each);
    }
    EXPECT_FALSE(session.canUndo());
    EXPECT_FALSE(session.undo(kNow + 4));
    EXPECT_EQ(state(), before);
    EXPECT_EQ(session.summary(kNow).ratings, 0);
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{3, 0, 0}));
    for (const char* each : {"a", "b", "c"}) {
        EXPECT_EQ(front(session), each);
        session.rate(Rating::easy, kNow + 5, 1);
    }
    EXPECT_EQ(front(session), "(over)");
}

TEST_F(ReviewSessionTest, AfterAnUndoTheCardThatWasCurrentComesNext) {
    for (const char* each : {"a", "b", "c"}) addNew(each);
    ReviewSession session = this->session();
    session.rate(Rating::again, kNow, 1);
    session.rate(Rating::easy, kNow, 1);
    EXPECT_TRUE(session.undo(kNow + 5 * kMinute));
    EXPECT_EQ(front(session), "b");
    session.rate(Rating::easy, kNow + 5 * kMinute, 1);
    EXPECT_EQ(front(session), "c");  // though a is due by now
    session.rate(Rating::easy, kNow + 5 * kMinute, 1);
    EXPECT_EQ(front(session), "a");
}

TEST_F(ReviewSessionTest, UndoNeverTakesBackWhatWasRatedElsewhere) {
    const CardId foreign = addNew("foreign");
    const CardId a = addNew("a");
    const CardId b = addNew("b");
    store_.rate(foreign, Rating::easy, kNow);
    ReviewSession session = this->session();
    EXPECT_FALSE(session.undo(kNow));
    session.rate(Rating::easy, kNow, 1);
    session.rate(Rating::easy, kNow, 1);
    store_.rate(foreign, Rating::again, kNow + 60);
    const Flashcard kept = card(foreign);
    EXPECT_TRUE(session.undo(kNow + 61));  // b, beneath the foreign rating
    EXPECT_EQ(card(b).memory.phase, CardMemory::Phase::fresh);
    store_.rate(a, Rating::again, kNow + 62);  // now rests on this session's rating
    const Flashcard ratedElsewhere = card(a);
    session.refresh(kNow + 63);
    EXPECT_FALSE(session.canUndo());
    EXPECT_FALSE(session.undo(kNow + 63));
    EXPECT_EQ(card(a), ratedElsewhere);
    EXPECT_EQ(card(foreign), kept);
}

TEST_F(ReviewSessionTest, UndoPassesOverWhatWasTakenBackResetOrRemovedElsewhere) {
    for (const char* each : {"a", "b", "c", "d"}) addNew(each);
    ReviewSession session = this->session();
    std::vector<CardId> rated;
    for (int i = 0; i < 4; ++i) {
        rated.push_back(session.current()->id);
        i == 2 ? session.suspend(kNow) : void(session.rate(Rating::easy, kNow, 1));
    }
    store_.undo(kNow);                      // d
    store_.setSuspended(rated[2], false);   // c
    store_.remove(rated[1]);                // b
    EXPECT_TRUE(session.undo(kNow));
    EXPECT_EQ(front(session), "a");
    EXPECT_FALSE(session.canUndo());
    EXPECT_EQ(session.summary(kNow).ratings, 2);
}

TEST_F(ReviewSessionTest, RefreshDropsWhatIsNoLongerOffered) {
    const PageId other = addPage();
    const CardId removed = addNew("removed");
    const CardId suspended = addNew("suspended");
    addNew("of a trashed page", other);
    const CardId ratedElsewhere = addNew("rated elsewhere");
    const CardId edited = addNew("stays");
    ReviewSession session = this->session();
    const Subscription observer = store_.changed.connect([&](const auto&) { session.refresh(kNow); });
    store_.remove(removed);
    EXPECT_EQ(front(session), "suspended");
    store_.setSuspended(suspended, true);
    EXPECT_EQ(front(session), "of a trashed page");
    ASSERT_TRUE(library_.deletePage(other));
    store_.rate(ratedElsewhere, Rating::easy, kNow);
    EXPECT_EQ(front(session), "stays");
    CardContent content = contentOf(card(edited));
    content.front = "edited";
    store_.edit(edited, content);
    addNew("too late");
    EXPECT_EQ(front(session), "edited");
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{1, 0, 0}));
    store_.removePage(page_);
    EXPECT_EQ(session.rate(Rating::good, kNow, 1), ReviewSession::LeechNotice::none);
    EXPECT_EQ(front(session), "(over)");
}

TEST_F(ReviewSessionTest, LeechesAreAnnounced) {
    set("flashcards.leechLapses", 1);
    addDue("first", 3);
    addDue("second", 2);
    addNew("new");
    ReviewSession session = this->session();
    EXPECT_EQ(session.rate(Rating::again, kNow, 1), ReviewSession::LeechNotice::suspended);
    set("flashcards.suspendLeeches", 0);
    EXPECT_EQ(front(session), "new");
    EXPECT_EQ(session.rate(Rating::again, kNow, 1), ReviewSession::LeechNotice::none);
    EXPECT_EQ(session.rate(Rating::again, kNow, 1), ReviewSession::LeechNotice::staysInReview);
    EXPECT_EQ(session.rate(Rating::good, kNow + 11 * kMinute, 1), ReviewSession::LeechNotice::none);
    EXPECT_TRUE(store_.cards()[0].suspended);
    while (session.undo(kNow)) {
    }
    EXPECT_FALSE(store_.cards()[0].suspended);
    EXPECT_EQ(front(session), "first");
}

TEST_F(ReviewSessionTest, MidnightAndAClockSetBackLoseNoCard) {
    const Date beforeMidnight = *parseIso8601("2026-11-21T22:59:30Z");
    for (const char* each : {"a", "b", "c"}) addNew(each);
    const auto before = state();
    ReviewSession session = this->session(beforeMidnight);
    session.rate(Rating::good, beforeMidnight, 1);
    session.rate(Rating::again, beforeMidnight + 60, 1);
    EXPECT_EQ(store_.introduced(), (std::map<std::string, std::int64_t>{{"2026-11-21", 1}, {"2026-11-22", 1}}));
    session.refresh(beforeMidnight - 7200);
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{1, 2, 0}));
    for (const char* each : {"c", "b", "a"}) {
        EXPECT_EQ(front(session), each);
        session.rate(Rating::easy, beforeMidnight - 7200, 1);
    }
    EXPECT_EQ(front(session), "(over)");
    while (session.undo(beforeMidnight - 9000)) {
    }
    EXPECT_EQ(state(), before);
    EXPECT_EQ(remaining(session), (std::vector<std::int64_t>{3, 0, 0}));
}

TEST_F(ReviewSessionTest, RandomSessionsEndWhereTheyBegan) {
    std::mt19937 random(5);
    set("flashcards.leechLapses", 1);
    for (int i = 0; i < 6; ++i) addNew("new");
    for (int i = 0; i < 6; ++i) addDue("due", i + 1);
    for (int i = 0; i < 2; ++i) store_.rate(addNew("learning"), Rating::good, kNow - 60.0 * i);
    const auto before = state();
    for (int round = 0; round < 2000; ++round) {
        ReviewSession session = this->session();
        const auto atStart = remaining(session);
        const CardId first = session.current()->id;
        Date now = kNow;
        Subscription observer;
        if (round % 2 == 1) observer = store_.changed.connect([&](const auto&) { session.refresh(now); });
        for (auto step = random() % 30; step > 0; --step) {
            now = now + (static_cast<double>(random() % 400) - 50);
            switch (random() % 8) {
                case 0: session.undo(now); break;
                case 1: session.suspend(now); break;
                case 2: session.refresh(now); break;
                default: session.rate(static_cast<Rating>(random() % 4 + 1), now, 1);
            }
        }
        while (session.undo(now)) {
        }
        ASSERT_EQ(state(), before) << round;
        session.refresh(kNow);
        ASSERT_EQ(remaining(session), atStart) << round;
        ASSERT_EQ(session.current()->id, first) << round;
    }
}

}  // namespace
}  // namespace tessary
