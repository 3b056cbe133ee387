#include "study/review_session.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace tessary {
namespace {

using Phase = CardMemory::Phase;

bool isLearning(const Flashcard& card) {
    return card.memory.phase == Phase::learning || card.memory.phase == Phase::relearning;
}

}  // namespace

ReviewSession::ReviewSession(FlashcardStore& cards, const JournalStore& library, const Settings& settings,
                             const LocalCalendar& calendar, ReviewScope scope, Date now)
    : cards_(cards),
      library_(library),
      settings_(settings),
      calendar_(calendar),
      scope_(scope),
      start_(now),
      pages_(library, scope),
      now_(now),
      latest_(now) {
    ReviewQueue queue = buildReviewQueue(cards, library, settings, calendar, scope, now);
    main_.assign(queue.main.begin(), queue.main.end());
    learning_ = std::move(queue.learning);
    advance();
}

const Flashcard* ReviewSession::current() const { return current_ ? cards_.cards().find(*current_) : nullptr; }

ReviewSession::Remaining ReviewSession::remaining() const {
    Remaining remaining;
    const auto count = [&](CardId id) {
        const Flashcard* card = cards_.cards().find(id);
        if (!isOffered(card)) return;
        std::int64_t& notLearning = card->memory.phase == Phase::fresh ? remaining.fresh : remaining.review;
        ++(isLearning(*card) ? remaining.learning : notLearning);
    };
    if (current_) count(*current_);
    if (forced_) count(*forced_);
    for (const CardId id : main_) {
        if (isOfMain(cards_.cards().find(id))) count(id);
    }
    for (const CardId id : learning_) {
        const Flashcard* card = cards_.cards().find(id);
        if (id != current_ && id != forced_ && isOffered(card) && comesBackSoon(*card)) ++remaining.learning;
    }
    return remaining;
}

ReviewSession::LeechNotice ReviewSession::rate(Rating rating, Date now, double secondsTaken) {
    tell(now);
    const Flashcard* card = current();
    if (card == nullptr) {
        refresh(now);
        return LeechNotice::none;
    }
    const CardId id = card->id;
    const std::int64_t lapses = card->memory.lapses;
    const double seconds = std::max(0.0, secondsTaken);
    changing_ = true;
    const FlashcardStore::Rated rated = *cards_.rate(id, rating, now, seconds);
    changing_ = false;
    steps_.push_back({id, rated.number});
    given_.push_back({rated.number, id, rating, seconds});
    keepIfLearning(id);
    current_.reset();
    advance();
    if (rated.suspendedAsLeech) return LeechNotice::suspended;
    const Flashcard* after = cards_.cards().find(id);
    const bool forgottenAgain = after != nullptr && after->memory.lapses > lapses && cards_.isLeech(*after);
    return forgottenAgain ? LeechNotice::staysInReview : LeechNotice::none;
}

void ReviewSession::suspend(Date now) {
    tell(now);
    const Flashcard* card = current();
    if (card == nullptr || card->suspended) return refresh(now);
    steps_.push_back({card->id, std::nullopt});
    changing_ = true;
    cards_.setSuspended(card->id, true);
    changing_ = false;
    current_.reset();
    advance();
}

bool ReviewSession::undo(Date now) {
    tell(now);
    dropLostSteps();
    if (steps_.empty()) return false;
    const Step step = steps_.back();
    steps_.pop_back();
    takeBack(step);
    dropLostSteps();
    keepIfLearning(step.card);
    if (isOffered(cards_.cards().find(step.card))) {
        if (forced_ && forced_ != step.card) putBack(*forced_);
        forced_ = current_ == step.card ? std::nullopt : current_;
        current_ = step.card;
    }
    advance();
    return true;
}

void ReviewSession::refresh(Date now) {
    tell(now);
    if (changing_) return;
    pages_ = ScopePages(library_, scope_);
    const auto isGone = [&](CardId id) { return !isOffered(cards_.cards().find(id)); };
    std::erase_if(main_, isGone);
    std::erase_if(learning_, isGone);
    if (forced_ && isGone(*forced_)) forced_.reset();
    if (current_ && isGone(*current_)) current_.reset();
    dropLostSteps();
    advance();
}

ReviewSession::Summary ReviewSession::summary(Date now) const {
    Summary summary;
    std::unordered_set<CardId> rated;
    for (const Given& given : given_) {
        rated.insert(given.card);
        if (given.rating != Rating::again) ++summary.remembered;
        summary.seconds += given.seconds;
    }
    summary.cards = std::ssize(rated);
    summary.ratings = std::ssize(given_);
    summary.nextDue = nextReview(cards_, library_, settings_, calendar_, scope_, now);
    return summary;
}

/// A review that another session rated is due later than this one's start.
bool ReviewSession::isOffered(const Flashcard* card) const {
    if (card == nullptr || card->suspended || !pages_.contains(card->pageID)) return false;
    return card->memory.phase != Phase::review || card->memory.due <= start_;
}

bool ReviewSession::isOfMain(const Flashcard* card) const { return isOffered(card) && !isLearning(*card); }

bool ReviewSession::comesBackSoon(const Flashcard& card) const {
    return isLearning(card) && card.memory.due <= latest_ + kLearnAhead;
}

bool ReviewSession::canTakeBack(const Step& step) const {
    if (step.rating) return cards_.canUndo(*step.rating);
    const Flashcard* card = cards_.cards().find(step.card);
    return card != nullptr && card->suspended;
}

void ReviewSession::takeBack(const Step& step) {
    changing_ = true;
    if (step.rating) {
        std::erase_if(given_, [&](const Given& given) { return given.number == *step.rating; });
        cards_.undo(*step.rating, now_);
    } else {
        cards_.setSuspended(step.card, false);
    }
    changing_ = false;
}

/// What was changed from outside since can't be taken back. Of the steps further down only time will tell: the later
/// ratings of their own cards are in their way.
void ReviewSession::dropLostSteps() {
    while (!steps_.empty() && !canTakeBack(steps_.back())) steps_.pop_back();
}

void ReviewSession::tell(Date now) {
    now_ = now;
    latest_ = std::max(latest_, now);
}

void ReviewSession::advance() {
    if (!current_) current_ = takeForced();
    if (!current_) current_ = learningCard(LearningDue::now);
    if (!current_) current_ = takeFromMain();
    if (!current_) current_ = learningCard(LearningDue::soon);
}

std::optional<CardId> ReviewSession::takeForced() {
    const std::optional<CardId> id = std::exchange(forced_, std::nullopt);
    return id && isOffered(cards_.cards().find(*id)) ? id : std::nullopt;
}

std::optional<CardId> ReviewSession::takeFromMain() {
    while (!main_.empty()) {
        const CardId id = main_.front();
        main_.pop_front();
        if (isOfMain(cards_.cards().find(id))) return id;
    }
    return std::nullopt;
}

/// The one that falls due first.
std::optional<CardId> ReviewSession::learningCard(LearningDue due) const {
    const Flashcard* best = nullptr;
    for (const CardId id : learning_) {
        const Flashcard* card = cards_.cards().find(id);
        if (card == nullptr || !comesBackSoon(*card)) continue;
        if (best != nullptr && best->memory.due <= card->memory.due) continue;
        const bool isTime = due == LearningDue::soon || card->memory.due <= now_;
        if (isTime && isOffered(card)) best = card;
    }
    return best == nullptr ? std::nullopt : std::optional(best->id);
}

void ReviewSession::keepIfLearning(CardId id) {
    const Flashcard* card = cards_.cards().find(id);
    if (card == nullptr || !isLearning(*card) || std::ranges::find(learning_, id) != learning_.end()) return;
    learning_.push_back(id);
}

/// Learning cards have stayed among their own.
void ReviewSession::putBack(CardId id) {
    const Flashcard* card = cards_.cards().find(id);
    if (card != nullptr && !isLearning(*card)) main_.push_front(id);
}

}  // namespace tessary
