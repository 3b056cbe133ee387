#pragma once

#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/signal.h"
#include "library/delayed_save.h"
#include "library/json_file.h"
#include "library/record_list.h"
#include "study/deck_stats.h"
#include "study/flashcard.h"
#include "study/review_log.h"

namespace tessary {

/// The whole content of flashcards.json.
struct FlashcardFile {
    std::int64_t version = 1;
    RecordList<Flashcard>::Snapshot cards;
    std::map<std::string, std::int64_t> introduced;  ///< new cards first rated on a day, by day key
};

template <>
struct Record<FlashcardFile> {
    static constexpr auto fields = std::tuple{
        withDefault("version", &FlashcardFile::version, 1),
        required("cards", &FlashcardFile::cards),
        withDefault("introduced", &FlashcardFile::introduced),
    };
};

/// One rating as long as the store lives; never used twice.
enum class RatingNumber : std::uint64_t {};

/// The single owner of every flashcard. Main thread only. Every change is written a moment later.
class FlashcardStore {
public:
    /// Loads the file. All arguments outlive the store.
    FlashcardStore(std::filesystem::path file, StoreServices services, SerialQueue& queue, ReviewLog& log,
                   StoreAccess access);
    ~FlashcardStore();
    FlashcardStore(const FlashcardStore&) = delete;
    FlashcardStore& operator=(const FlashcardStore&) = delete;

    static constexpr double kSaveDelay = 0.5;  ///< seconds

    /// The cards added, changed or removed.
    Signal<std::vector<CardId>> changed;

    [[nodiscard]] const RecordList<Flashcard>& cards() const { return cards_; }
    [[nodiscard]] const std::map<std::string, std::int64_t>& introduced() const { return introduced_; }
    /// What was wrong with the file at load; empty when nothing was.
    [[nodiscard]] const std::string& loadProblem() const { return file_.loadProblem(); }

    /// New cards with fresh memories, in order. The caller has checked `contentProblem`.
    std::vector<CardId> addCards(PageId page, std::vector<CardContent> contents, Date now);

    struct Rated {
        bool suspendedAsLeech = false;  ///< by this very rating
        RatingNumber number{};
    };
    /// Schedules the card anew, counts it when it was new, applies the leech rule, logs the rating. Absent for an
    /// unknown card. `secondsTaken` is the learner's time, 0 when unknown.
    std::optional<Rated> rate(CardId card, Rating rating, Date now, double secondsTaken = 0);
    /// Takes back the last rating that has not been taken back: memory, moment of failure, a suspension as a leech, and
    /// the place among the day's new cards. An edit made since stays. Gives the card; absent when there is no rating
    /// left, or its card is gone.
    std::optional<CardId> undo(Date now);
    [[nodiscard]] bool canUndo() const { return !undoStack_.empty(); }
    /// Takes back this one rating, whatever other cards were rated since. False when it can't be.
    bool undo(RatingNumber rating, Date now);
    /// False once it was taken back, or its card was removed or reset; and while a later rating of the card stands.
    [[nodiscard]] bool canUndo(RatingNumber rating) const;

    // False when there is no such card.
    bool edit(CardId card, CardContent content);
    bool setSuspended(CardId card, bool suspended);
    bool setFlagged(CardId card, bool flagged);
    /// A fresh new-card memory; earlier ratings can't be taken back any more.
    bool reset(CardId card, Date now);
    bool remove(CardId card);
    // The number of cards they touched.
    std::size_t resetPage(PageId page, Date now);
    std::size_t removePage(PageId page);

    /// As the one-card forms, for many at once; what is not there is passed over. Each gives the cards it changed, as
    /// they were, in the store's order.
    RecordList<Flashcard>::Snapshot removeCards(const std::unordered_set<CardId>& cards);
    RecordList<Flashcard>::Snapshot resetCards(const std::unordered_set<CardId>& cards, Date now);
    RecordList<Flashcard>::Snapshot setSuspended(const std::unordered_set<CardId>& cards, bool suspended);
    RecordList<Flashcard>::Snapshot setFlagged(const std::unordered_set<CardId>& cards, bool flagged);
    /// Takes back one of these: a card that is gone comes back whole, at the end; one that is still there gets back its
    /// memory, its flag and its suspension, and keeps what was edited since.
    void restore(const RecordList<Flashcard>::Snapshot& cards);

    [[nodiscard]] FlashcardDeckStats stats(PageId page, Date now) const;
    [[nodiscard]] bool isLeech(const Flashcard& card) const;
    /// From how many lapses on a card is a leech; 0 or less when none ever is.
    [[nodiscard]] std::int64_t leechLapses() const;

    /// New cards that may still be offered today.
    [[nodiscard]] std::int64_t newCardsLeft(Date now) const;
    /// Reviews that may still be offered today. What was done is told from the cards' last reviews, so that the limit
    /// holds across restarts.
    [[nodiscard]] std::int64_t reviewsLeft(Date now) const;

    /// Queues what is pending, or what failed to be written.
    void flush();
    /// Flushes and waits; the error is for the user.
    std::expected<void, std::string> flushAndWait();

private:
    /// A rating that can be taken back.
    struct Undoable {
        RatingNumber number{};
        CardId id;
        std::shared_ptr<const Flashcard> previous;
        ReviewLogEntry logged;
        std::optional<std::string> introducedOn;  ///< day key, when it counted as a new card
        bool suspendedAsLeech = false;
    };

    template <class Change>
    bool change(CardId card, Change apply);
    template <class Change>
    RecordList<Flashcard>::Snapshot changeAll(const std::unordered_set<CardId>& cards, Change apply);
    void touched(std::vector<CardId> cards);
    [[nodiscard]] std::optional<std::size_t> undoableAt(RatingNumber rating) const;
    bool takeBack(std::size_t index, Date now);
    void forgetUndo(CardId card);
    void save();
    [[nodiscard]] std::string today(Date now) const;
    [[nodiscard]] std::int64_t introducedOn(const std::string& day) const;

    StoreServices services_;
    SerialQueue& queue_;
    ReviewLog& log_;
    StoreAccess access_;
    JsonFile<FlashcardFile> file_;
    RecordList<Flashcard> cards_;
    std::map<std::string, std::int64_t> introduced_;
    std::vector<Undoable> undoStack_;
    std::uint64_t ratings_ = 0;  ///< since the store was made
    DelayedSave saveWork_;
    Subscription flushObserver_;
};

}  // namespace tessary
