#include "study/flashcard_store.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/atomic_write.h"
#include "study_fixture.h"

namespace tessary {
namespace {

constexpr Date kNow{817007400};  // 2026-11-22T02:30:00Z
const std::filesystem::path kFile = "/library/flashcards.json";
const PageId kPage{Uuid{{1}}};

class DroppingQueue final : public SerialQueue {
public:
    void post(std::move_only_function<void()>) override {}
    void drain() override {}
};

/// A store on files in memory, started as often as a test likes.
class FlashcardStoreTest : public StudyTest {
protected:
    FlashcardStoreTest() : StudyTest(kNow) { start(); }

    void start(StoreAccess access = StoreAccess::readWrite) {
        store_.reset();
        store_.emplace(kFile, services_, queue_, log_, access);
    }

    CardId addCard(const std::string& front = "Q") {
        CardContent content;
        content.front = front;
        content.back = "A";
        return store_->addCards(kPage, {content}, kNow).front();
    }

    const Flashcard& card(CardId id) { return *store_->cards().find(id); }

    /// Brings a card to `lapses` lapses.
    CardId forgottenCard(int lapses) {
        const CardId id = addCard();
        Date now = kNow;
        store_->rate(id, Rating::easy, now);
        for (int i = 0; i < lapses; ++i) {
            now = now + 30 * kSecondsPerDay;
            lastRated_ = *store_->rate(id, Rating::again, now);
            store_->rate(id, Rating::good, now);
        }
        return id;
    }

    std::optional<FlashcardStore> store_;
    FlashcardStore::Rated lastRated_;
};

TEST_F(FlashcardStoreTest, EverythingIsKeptAcrossRestarts) {
    const CardId id = addCard("Was heißt „Haus“?");
    store_->rate(id, Rating::good, kNow);
    store_->setFlagged(id, true);
    const Flashcard before = card(id);
    ASSERT_TRUE(store_->flushAndWait());
    start();
    ASSERT_EQ(store_->cards().size(), 1U);
    EXPECT_EQ(card(id), before);
    EXPECT_EQ(store_->newCardsLeft(kNow), 19);
}

TEST_F(FlashcardStoreTest, BurstOfChangesIsOneWrite) {
    for (int i = 0; i < 5; ++i) addCard();
    EXPECT_FALSE(exists(files_, kFile));
    loop_.advance(0.4);
    addCard();
    loop_.advance(0.4);
    EXPECT_FALSE(exists(files_, kFile));
    loop_.advance(0.2);
    EXPECT_TRUE(exists(files_, kFile));
}

TEST_F(FlashcardStoreTest, FailedSaveIsReportedAndWrittenAgain) {
    addCard();
    files_.failAfter(1, FileError::Kind::noSpace);
    EXPECT_FALSE(store_->flushAndWait());
    EXPECT_TRUE(console_.lines().back().starts_with("Notara: flashcards save failed — "));
    files_.stopFailing();
    EXPECT_TRUE(store_->flushAndWait());
    start();
    EXPECT_EQ(store_->cards().size(), 1U);
}

TEST_F(FlashcardStoreTest, RatingANewCardTakesAPlaceOfTheLocalDayAndUndoGivesItBack) {
    const CardId id = addCard();
    const Date beforeMidnight{817007400 - 5 * 3600};  // 22:30 in Berlin on the 21st
    store_->rate(id, Rating::again, beforeMidnight);
    store_->rate(id, Rating::good, kNow);
    EXPECT_EQ(store_->introduced(), (std::map<std::string, std::int64_t>{{"2026-11-21", 1}}));
    store_->undo(kNow);
    EXPECT_EQ(store_->newCardsLeft(beforeMidnight), 19);
    store_->undo(kNow);
    EXPECT_TRUE(store_->introduced().empty());
    EXPECT_FALSE(store_->undo(kNow));
}

TEST_F(FlashcardStoreTest, UndoKeepsAnEditMadeSince) {
    const CardId id = addCard("before");
    store_->rate(id, Rating::again, kNow);
    CardContent content = contentOf(card(id));
    content.front = "after";
    store_->edit(id, content);
    EXPECT_EQ(store_->undo(kNow), id);
    EXPECT_EQ(card(id).front, "after");
    EXPECT_EQ(card(id).memory, freshMemory(kNow));
    EXPECT_FALSE(card(id).failedAt);
}

TEST_F(FlashcardStoreTest, UndoOfARemovedOrResetCardDoesNothing) {
    const CardId removed = addCard();
    const CardId reset = addCard();
    store_->rate(removed, Rating::good, kNow);
    store_->rate(reset, Rating::good, kNow);
    store_->remove(removed);
    store_->reset(reset, kNow);
    EXPECT_FALSE(store_->undo(kNow));
    EXPECT_EQ(card(reset).memory, freshMemory(kNow));
}

TEST_F(FlashcardStoreTest, SeveralCardsAreRemovedInOneChange) {
    const CardId first = addCard();
    const CardId second = addCard();
    const CardId stays = addCard();
    store_->rate(second, Rating::good, kNow);
    std::vector<std::vector<CardId>> changes;
    const Subscription watching =
        store_->changed.connect([&](const std::vector<CardId>& ids) { changes.push_back(ids); });
    EXPECT_EQ(store_->removeCards({second, CardId{Uuid{}}, first}).size(), 2U);
    EXPECT_EQ(changes, (std::vector<std::vector<CardId>>{{first, second}}));
    EXPECT_FALSE(store_->canUndo()) << "the rated card is gone";
    EXPECT_TRUE(store_->removeCards({first}).empty());
    EXPECT_EQ(changes.size(), 1U) << "nothing was changed";
    EXPECT_EQ(store_->cards().size(), 1U);
    EXPECT_NE(store_->cards().find(stays), nullptr);
}

TEST_F(FlashcardStoreTest, RandomRatingsAndUndosEndWhereTheyBegan) {
    DroppingQueue dropping;  // sixty thousand lines of log would take most of the time
    ReviewLog log("/library/Reviews", services_, dropping);
    store_.emplace("/library/random.json", services_, dropping, log, StoreAccess::readWrite);
    std::mt19937 random(11);
    std::vector<CardId> ids;
    for (int i = 0; i < 8; ++i) ids.push_back(addCard(std::to_string(i)));
    for (int sequence = 0; sequence < 10000; ++sequence) {
        const auto before = store_->cards().snapshot();
        const auto introduced = store_->introduced();
        int pending = 0;
        Date now = kNow;
        for (int step = 0; step < 6; ++step) {
            now = now + static_cast<double>(random() % 900000);
            if (pending > 0 && random() % 4 == 0) {
                store_->undo(now);
                --pending;
            } else {
                store_->rate(ids[random() % ids.size()], static_cast<Rating>(random() % 4 + 1), now);
                ++pending;
            }
        }
        while (pending-- > 0) store_->undo(now);
        for (std::size_t i = 0; i < ids.size(); ++i) ASSERT_EQ(store_->cards()[i], *before[i]) << sequence;
        ASSERT_EQ(store_->introduced(), introduced);
    }
    store_.reset();
}

TEST_F(FlashcardStoreTest, EighthLapseSuspendsUnlessSwitchedOff) {
    EXPECT_FALSE(card(forgottenCard(7)).suspended);
    EXPECT_FALSE(lastRated_.suspendedAsLeech);
    const CardId leech = forgottenCard(8);
    EXPECT_TRUE(card(leech).suspended);
    EXPECT_EQ(store_->stats(kPage, kNow).leeches, 1);

    ASSERT_TRUE(settings_.setBoolean("flashcards.suspendLeeches", false));
    const CardId kept = forgottenCard(9);
    EXPECT_FALSE(card(kept).suspended);
    EXPECT_TRUE(store_->isLeech(card(kept)));

    ASSERT_TRUE(settings_.setBoolean("flashcards.suspendLeeches", true));
    ASSERT_TRUE(settings_.setInteger("flashcards.leechLapses", 0));
    EXPECT_FALSE(card(forgottenCard(12)).suspended);
}

TEST_F(FlashcardStoreTest, ReviewLimitCountsTheDaysReviewsAcrossRestarts) {
    const CardId known = addCard();
    store_->rate(known, Rating::easy, kNow - 30 * kSecondsPerDay);
    store_->rate(known, Rating::good, kNow);
    store_->rate(addCard(), Rating::good, kNow);
    ASSERT_TRUE(store_->flushAndWait());
    start();
    EXPECT_EQ(store_->reviewsLeft(kNow), 199);
    EXPECT_EQ(store_->newCardsLeft(kNow), 19);
    EXPECT_EQ(store_->reviewsLeft(kNow + kSecondsPerDay), 200);
    ASSERT_TRUE(settings_.setInteger("flashcards.newPerDay", 1));
    EXPECT_EQ(store_->newCardsLeft(kNow), 0);
}

TEST_F(FlashcardStoreTest, StatsCountTheDeck) {
    addCard();
    const CardId learning = addCard();
    store_->rate(learning, Rating::good, kNow);
    const CardId review = addCard();
    store_->rate(review, Rating::easy, kNow);
    const CardId suspended = addCard();
    store_->setSuspended(suspended, true);
    store_->setFlagged(suspended, true);
    FlashcardDeckStats expected{.total = 4,
                                .fresh = 1,
                                .learning = 1,
                                .review = 1,
                                .due = 1,
                                .suspended = 1,
                                .flagged = 1,
                                .leeches = 0,
                                .averageRecall = 1.0};
    EXPECT_EQ(store_->stats(kPage, kNow), expected);
    EXPECT_EQ(store_->stats(PageId{Uuid{{9}}}, kNow), FlashcardDeckStats{});
}

TEST_F(FlashcardStoreTest, DamagedFileIsPreservedAndReadOnlyWritesNothing) {
    ASSERT_TRUE(files_.createFolders("/library"));
    ASSERT_TRUE(writeAtomically(files_, kFile, "{\"cards\": 7}"));
    const int steps = files_.steps();
    start(StoreAccess::readOnly);
    const CardId id = addCard();
    store_->rate(id, Rating::good, kNow);
    store_->flush();
    EXPECT_EQ(files_.steps(), steps);

    start();
    EXPECT_EQ(store_->cards().size(), 0U);
    EXPECT_TRUE(
        console_.lines().back().starts_with("Notara: flashcards.json could not be decoded — copy preserved at "));
    addCard();
    ASSERT_TRUE(store_->flushAndWait());
    EXPECT_EQ(*files_.read("/library/flashcards-corrupt-2026-11-22-033000.json"), "{\"cards\": 7}");
}

TEST_F(FlashcardStoreTest, EveryRatingAndUndoIsLoggedByMonth) {
    const CardId id = addCard();
    const Date december = kNow + 20 * kSecondsPerDay;
    store_->rate(id, Rating::easy, kNow, 4.5);
    store_->rate(id, Rating::again, december);
    store_->undo(december + 60);
    const std::vector<ReviewLogEntry> entries = log_.read();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].secondsTaken, 4.5);
    EXPECT_FALSE(entries[0].elapsedDays);
    EXPECT_EQ(entries[1].elapsedDays, 20);
    EXPECT_EQ(entries[1].phase, CardMemory::Phase::review);
    EXPECT_LT(entries[1].stabilityAfter, entries[1].stabilityBefore);
    EXPECT_EQ(entries[2].kind, ReviewLogEntry::Kind::undo);
    EXPECT_TRUE(exists(files_, "/library/Reviews/2026-11.jsonl"));
    const std::string november = *files_.read("/library/Reviews/2026-11.jsonl");
    ASSERT_TRUE(writeAtomically(files_, "/library/Reviews/2026-11.jsonl", november + "{\"at\":1,\"ca"));
    EXPECT_EQ(log_.read().size(), 3U);
    store_->rate(id, Rating::good, kNow);
    EXPECT_EQ(log_.read().size(), 4U);
}

TEST_F(FlashcardStoreTest, CardsRemovedTogetherComeBackWhole) {
    const CardId first = addCard("first");
    const CardId kept = addCard("kept");
    const CardId last = addCard("last");
    store_->rate(first, Rating::good, kNow);
    store_->setFlagged(last, true);
    const Flashcard before = card(first);
    std::vector<std::vector<CardId>> told;
    const Subscription follow = store_->changed.connect([&](const std::vector<CardId>& ids) { told.push_back(ids); });
    const auto removed = store_->removeCards({first, last, CardId{Uuid{{77}}}});
    ASSERT_EQ(removed.size(), 2U);
    EXPECT_EQ(store_->cards().size(), 1U);
    EXPECT_FALSE(store_->canUndo());  // there is no card to take the rating back from
    store_->restore(removed);
    EXPECT_EQ(told.size(), 2U);
    EXPECT_EQ(card(first), before);
    EXPECT_TRUE(card(last).flagged);
    EXPECT_EQ(store_->cards()[0].id, kept);
    EXPECT_EQ(store_->cards()[1].id, first);
}

TEST_F(FlashcardStoreTest, AChangeOfManyCardsIsTakenBackButNotWhatWasWrittenSince) {
    const CardId id = addCard("before");
    const CardId other = addCard("other");
    store_->rate(id, Rating::again, kNow);
    const CardMemory learned = card(id).memory;
    const auto before = store_->resetCards({id}, kNow + 60);
    EXPECT_EQ(card(id).memory, freshMemory(kNow + 60));
    EXPECT_FALSE(card(id).failedAt);
    CardContent content = contentOf(card(id));
    content.front = "after";
    store_->edit(id, content);
    store_->restore(before);
    EXPECT_EQ(card(id).memory, learned);
    EXPECT_TRUE(card(id).failedAt);
    EXPECT_EQ(card(id).front, "after");

    store_->setSuspended(other, true);
    const auto suspended = store_->setSuspended({id, other}, true);
    EXPECT_TRUE(card(id).suspended && card(other).suspended);
    store_->restore(suspended);
    EXPECT_FALSE(card(id).suspended);
    EXPECT_TRUE(card(other).suspended);
}

}  // namespace
}  // namespace tessary
