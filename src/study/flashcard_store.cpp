#include "study/flashcard_store.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "study/scheduler.h"

namespace tessary {
namespace {

constexpr std::string_view kSchedulerName = "FSRS-5";

}  // namespace

FlashcardStore::FlashcardStore(std::filesystem::path file, StoreServices services, SerialQueue& queue, ReviewLog& log,
                               StoreAccess access)
    : services_(services),
      queue_(queue),
      log_(log),
      access_(access),
      file_(std::move(file), "Notara: flashcards save failed — ", services, queue, access),
      saveWork_(services.loop, kSaveDelay, [this] { save(); }) {
    FlashcardFile content = file_.load();
    cards_ = RecordList<Flashcard>(std::move(content.cards));
    introduced_ = std::move(content.introduced);
    flushObserver_ = services_.notifications.observe(kNtoFlushStore, [this] { flush(); });
}

FlashcardStore::~FlashcardStore() = default;

std::vector<CardId> FlashcardStore::addCards(PageId page, std::vector<CardContent> contents, Date now) {
    std::vector<CardId> added;
    added.reserve(contents.size());
    for (CardContent& content : contents) {
        Flashcard card;
        card.id = CardId{services_.ids.next()};
        card.pageID = page;
        card.createdAt = now;
        card.memory = freshMemory(now);
        setContent(card, std::move(content));
        added.push_back(card.id);
        cards_.append(std::move(card));
    }
    touched(added);
    return added;
}

std::optional<FlashcardStore::Rated> FlashcardStore::rate(CardId id, Rating rating, Date now, double secondsTaken) {
    const std::shared_ptr<const Flashcard> previous = cards_.share(id);
    if (!previous) return std::nullopt;
    Flashcard card = *previous;
    card.memory = schedule(previous->memory, rating, now, desiredRetention(services_.settings), identityHash(id));
    if (rating == Rating::again) card.failedAt = now;

    Undoable undoable{.number = RatingNumber{++ratings_},
                      .id = id,
                      .previous = previous,
                      .logged = {},
                      .introducedOn = {},
                      .suspendedAsLeech = false};
    if (previous->memory.phase == CardMemory::Phase::fresh) {
        undoable.introducedOn = today(now);
        ++introduced_[*undoable.introducedOn];
    }
    if (isLeech(card) && !card.suspended && services_.settings.boolean("flashcards.suspendLeeches").value_or(true)) {
        card.suspended = undoable.suspendedAsLeech = true;
    }

    undoable.logged = ReviewLogEntry{.kind = ReviewLogEntry::Kind::rating,
                                     .at = now,
                                     .card = id,
                                     .rating = rating,
                                     .phase = previous->memory.phase,
                                     .stabilityBefore = previous->memory.stability,
                                     .stabilityAfter = card.memory.stability,
                                     .difficultyBefore = previous->memory.difficulty,
                                     .difficultyAfter = card.memory.difficulty,
                                     .elapsedDays = {},
                                     .intervalSeconds = card.memory.due - now,
                                     .secondsTaken = secondsTaken,
                                     .scheduler = std::string(kSchedulerName)};
    if (previous->memory.lastReview) {
        undoable.logged.elapsedDays = (now - *previous->memory.lastReview) / kSecondsPerDay;
    }
    if (access_ == StoreAccess::readWrite) log_.append(undoable.logged);

    const Rated rated{.suspendedAsLeech = undoable.suspendedAsLeech, .number = undoable.number};
    undoStack_.push_back(std::move(undoable));
    cards_.replace(std::move(card));
    touched({id});
    return rated;
}

std::optional<CardId> FlashcardStore::undo(Date now) {
    if (undoStack_.empty()) return std::nullopt;
    const CardId card = undoStack_.back().id;
    return takeBack(undoStack_.size() - 1, now) ? std::optional(card) : std::nullopt;
}

bool FlashcardStore::undo(RatingNumber rating, Date now) {
    const std::optional<std::size_t> index = undoableAt(rating);
    return index && takeBack(*index, now);
}

bool FlashcardStore::canUndo(RatingNumber rating) const { return undoableAt(rating).has_value(); }

/// Where it stands among the ratings that can be taken back, unless a later one of the same card rests on it.
std::optional<std::size_t> FlashcardStore::undoableAt(RatingNumber rating) const {
    const auto found = std::ranges::find(undoStack_, rating, &Undoable::number);
    if (found == undoStack_.end()) return std::nullopt;
    const bool ratedSince = std::find_if(found + 1, undoStack_.end(), [&](const Undoable& later) {
                                return later.id == found->id;
                            }) != undoStack_.end();
    if (ratedSince) return std::nullopt;
    return static_cast<std::size_t>(found - undoStack_.begin());
}

bool FlashcardStore::takeBack(std::size_t index, Date now) {
    const Undoable last = std::move(undoStack_[index]);
    undoStack_.erase(undoStack_.begin() + static_cast<std::ptrdiff_t>(index));
    if (last.introducedOn) {
        const auto day = introduced_.find(*last.introducedOn);
        if (day != introduced_.end() && --day->second <= 0) introduced_.erase(day);
    }
    const bool found = change(last.id, [&](Flashcard& card) {
        card.memory = last.previous->memory;
        card.failedAt = last.previous->failedAt;
        if (last.suspendedAsLeech) card.suspended = last.previous->suspended;
    });
    ReviewLogEntry undone = last.logged;
    undone.kind = ReviewLogEntry::Kind::undo;
    undone.at = now;
    if (access_ == StoreAccess::readWrite) log_.append(undone);
    return found;
}

template <class Change>
bool FlashcardStore::change(CardId id, Change apply) {
    const Flashcard* present = cards_.find(id);
    if (present == nullptr) return false;
    Flashcard card = *present;
    apply(card);
    cards_.replace(std::move(card));
    touched({id});
    return true;
}

bool FlashcardStore::edit(CardId id, CardContent content) {
    return change(id, [&](Flashcard& card) { setContent(card, std::move(content)); });
}

bool FlashcardStore::setSuspended(CardId id, bool suspended) {
    return change(id, [&](Flashcard& card) { card.suspended = suspended; });
}

bool FlashcardStore::setFlagged(CardId id, bool flagged) {
    return change(id, [&](Flashcard& card) { card.flagged = flagged; });
}

bool FlashcardStore::reset(CardId id, Date now) {
    forgetUndo(id);
    return change(id, [&](Flashcard& card) {
        card.memory = freshMemory(now);
        card.failedAt.reset();
    });
}

bool FlashcardStore::remove(CardId id) {
    if (cards_.extractIf([&](const Flashcard& card) { return card.id == id; }).empty()) return false;
    forgetUndo(id);
    touched({id});
    return true;
}

std::size_t FlashcardStore::resetPage(PageId page, Date now) {
    std::vector<CardId> ids;
    for (const Flashcard& card : cards_) {
        if (card.pageID == page) ids.push_back(card.id);
    }
    for (const CardId id : ids) reset(id, now);
    return ids.size();
}

std::size_t FlashcardStore::removePage(PageId page) {
    std::unordered_set<CardId> cards;
    for (const Flashcard& card : cards_) {
        if (card.pageID == page) cards.insert(card.id);
    }
    return removeCards(cards).size();
}

RecordList<Flashcard>::Snapshot FlashcardStore::removeCards(const std::unordered_set<CardId>& cards) {
    auto removed = cards_.extractIf([&](const Flashcard& card) { return cards.contains(card.id); });
    if (removed.empty()) return removed;
    std::erase_if(undoStack_, [&](const Undoable& undoable) { return cards.contains(undoable.id); });
    std::vector<CardId> ids;
    for (const auto& card : removed) ids.push_back(card->id);
    touched(std::move(ids));
    return removed;
}

template <class Change>
RecordList<Flashcard>::Snapshot FlashcardStore::changeAll(const std::unordered_set<CardId>& cards, Change apply) {
    RecordList<Flashcard>::Snapshot before;
    for (const auto& card : cards_.snapshot()) {
        if (cards.contains(card->id)) before.push_back(card);
    }
    std::vector<CardId> ids;
    for (const auto& present : before) {
        Flashcard card = *present;
        apply(card);
        cards_.replace(std::move(card));
        ids.push_back(present->id);
    }
    if (!ids.empty()) touched(std::move(ids));
    return before;
}

RecordList<Flashcard>::Snapshot FlashcardStore::resetCards(const std::unordered_set<CardId>& cards, Date now) {
    std::erase_if(undoStack_, [&](const Undoable& undoable) { return cards.contains(undoable.id); });
    return changeAll(cards, [now](Flashcard& card) {
        card.memory = freshMemory(now);
        card.failedAt.reset();
    });
}

RecordList<Flashcard>::Snapshot FlashcardStore::setSuspended(const std::unordered_set<CardId>& cards, bool suspended) {
    return changeAll(cards, [suspended](Flashcard& card) { card.suspended = suspended; });
}

RecordList<Flashcard>::Snapshot FlashcardStore::setFlagged(const std::unordered_set<CardId>& cards, bool flagged) {
    return changeAll(cards, [flagged](Flashcard& card) { card.flagged = flagged; });
}

void FlashcardStore::restore(const RecordList<Flashcard>::Snapshot& cards) {
    std::vector<CardId> ids;
    for (const auto& earlier : cards) {
        ids.push_back(earlier->id);
        const Flashcard* const present = cards_.find(earlier->id);
        if (present == nullptr) {
            cards_.append(*earlier);
            continue;
        }
        Flashcard card = *present;
        card.memory = earlier->memory;
        card.failedAt = earlier->failedAt;
        card.suspended = earlier->suspended;
        card.flagged = earlier->flagged;
        cards_.replace(std::move(card));
    }
    if (!ids.empty()) touched(std::move(ids));
}

FlashcardDeckStats FlashcardStore::stats(PageId page, Date now) const {
    DeckTally tally(now, leechLapses());
    for (const Flashcard& card : cards_) {
        if (card.pageID == page) tally.add(card);
    }
    return tally.stats();
}

bool FlashcardStore::isLeech(const Flashcard& card) const {
    const std::int64_t limit = leechLapses();
    return limit > 0 && card.memory.lapses >= limit;
}

std::int64_t FlashcardStore::newCardsLeft(Date now) const {
    const std::int64_t limit =
        std::max<std::int64_t>(0, services_.settings.integer("flashcards.newPerDay").value_or(20));
    return std::max<std::int64_t>(0, limit - introducedOn(today(now)));
}

std::int64_t FlashcardStore::reviewsLeft(Date now) const {
    const Date dayStart = services_.calendar.startOfDay(now);
    std::int64_t ratedToday = 0;
    for (const Flashcard& card : cards_) {
        if (card.memory.lastReview && *card.memory.lastReview >= dayStart) ++ratedToday;
    }
    // The cards introduced today were rated today too, but not reviewed.
    const std::int64_t reviewed = std::max<std::int64_t>(0, ratedToday - introducedOn(today(now)));
    const std::int64_t limit =
        std::max<std::int64_t>(0, services_.settings.integer("flashcards.maxReviews").value_or(200));
    return std::max<std::int64_t>(0, limit - reviewed);
}

void FlashcardStore::flush() {
    if (!saveWork_.isPending() && file_.lastSaveFailed()) return save();
    saveWork_.flush();
}

std::expected<void, std::string> FlashcardStore::flushAndWait() {
    flush();
    queue_.drain();
    if (!file_.lastSaveFailed()) return {};
    return std::unexpected(file_.name() + ": " + file_.lastSaveError());
}

void FlashcardStore::touched(std::vector<CardId> ids) {
    saveWork_.schedule();
    changed.emit(ids);
}

void FlashcardStore::forgetUndo(CardId id) {
    std::erase_if(undoStack_, [&](const Undoable& undoable) { return undoable.id == id; });
}

void FlashcardStore::save() {
    file_.saveRoot(FlashcardFile{.version = 1, .cards = cards_.snapshot(), .introduced = introduced_});
}

std::string FlashcardStore::today(Date now) const { return dayKey(services_.calendar.civilTime(now).day); }

std::int64_t FlashcardStore::leechLapses() const {
    return services_.settings.integer("flashcards.leechLapses").value_or(8);
}

std::int64_t FlashcardStore::introducedOn(const std::string& day) const {
    const auto found = introduced_.find(day);
    return found == introduced_.end() ? 0 : found->second;
}

}  // namespace tessary
