#pragma once

#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/signal.h"
#include "library/delayed_save.h"
#include "library/json_file.h"
#include "library/record_list.h"
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

/// The counts of one page's deck.
struct FlashcardDeckStats {
    std::int64_t total = 0;
    std::int64_t fresh = 0;  ///< "new" in JSON
    std::int64_t learning = 0;
    std::int64_t review = 0;
    std::int64_t due = 0;
    std::int64_t suspended = 0;
    std::int64_t flagged = 0;
    std::int64_t leeches = 0;
    std::optional<double> averageRecall;  ///< 0 to 1; absent when no card was reviewed yet

    friend bool operator==(const FlashcardDeckStats&, const FlashcardDeckStats&) = default;
};

template <>
struct Record<FlashcardDeckStats> {
    static constexpr auto fields = std::tuple{
        withDefault("total", &FlashcardDeckStats::total),
        withDefault("new", &FlashcardDeckStats::fresh),
        withDefault("learning", &FlashcardDeckStats::learning),
        withDefault("review", &FlashcardDeckStats::review),
        withDefault("due", &FlashcardDeckStats::due),
        withDefault("suspended", &FlashcardDeckStats::suspended),
        withDefault("flagged", &FlashcardDeckStats::flagged),
        withDefault("leeches", &FlashcardDeckStats::leeches),
        optional("averageRecall", &FlashcardDeckStats::averageRecall),
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
    /// In one change; those that are gone already are passed over.
    std::size_t remove(const std::vector<CardId>& cards);
    std::size_t resetPage(PageId page, Date now);
    std::size_t removePage(PageId page);

    [[nodiscard]] FlashcardDeckStats stats(PageId page, Date now) const;
    [[nodiscard]] bool isLeech(const Flashcard& card) const;

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
    template <class Unwanted>
    std::size_t removeIf(Unwanted unwanted);
    void touched(std::vector<CardId> cards);
    [[nodiscard]] std::optional<std::size_t> undoableAt(RatingNumber rating) const;
    bool takeBack(std::size_t index, Date now);
    void forgetUndo(CardId card);
    void save();
    [[nodiscard]] std::string today(Date now) const;
    [[nodiscard]] std::int64_t leechLapses() const;
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
