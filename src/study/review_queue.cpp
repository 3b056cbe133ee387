#include "study/review_queue.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>

namespace tessary {
namespace {

using Phase = CardMemory::Phase;

struct Candidate {
    Date due;
    std::uint64_t order = 0;  ///< among equals
    CardId card;
};

bool isEarlier(const Candidate& a, const Candidate& b) { return std::tie(a.due, a.order) < std::tie(b.due, b.order); }
bool isBefore(const Candidate& a, const Candidate& b) { return a.order < b.order; }

/// The finalizer of splitmix64: every bit of the value moves every bit of the result.
std::uint64_t mixed(std::uint64_t value) {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
    return value ^ (value >> 31);
}

/// The order of the cards on one day: drawn from the day and the identity alone, so that a restart keeps it.
class DayOrder {
public:
    explicit DayOrder(CivilDay day) {
        for (const char c : dayKey(day)) seed_ = mixed(seed_ + static_cast<unsigned char>(c));
    }
    std::uint64_t of(CardId id) const {
        std::uint64_t halves[2];
        std::memcpy(halves, id.uuid.bytes.data(), sizeof halves);
        return mixed(mixed(seed_ ^ halves[0]) ^ halves[1]);
    }

private:
    std::uint64_t seed_ = 0x9E3779B97F4A7C15ULL;
};

/// Answers for runs of cards of one page with a single look-up.
class PageFilter {
public:
    PageFilter(const JournalStore& library, const ReviewScope& scope) : pages_(library, scope) {}
    bool admits(PageId page) {
        if (!known_ || page != page_) {
            known_ = true;
            page_ = page;
            admitted_ = pages_.contains(page);
        }
        return admitted_;
    }

private:
    ScopePages pages_;
    PageId page_;
    bool known_ = false;
    bool admitted_ = false;
};

/// The first `limit` of many candidates: most are turned away before their page is looked up.
class Selection {
public:
    using Less = bool (*)(const Candidate&, const Candidate&);

    Selection(std::int64_t limit, std::size_t cards, Less less)
        : limit_(std::cmp_less(limit, cards) ? static_cast<std::size_t>(limit) : cards), less_(less) {}

    bool wants(const Candidate& candidate) const { return limit_ > 0 && (!last_ || less_(candidate, *last_)); }
    /// Nothing due later is wanted. Told without the rest of the card, which spares a slow access to memory for most.
    Date latestDue(Date latest) const { return last_ && last_->due < latest ? last_->due : latest; }
    void add(const Candidate& candidate) {
        candidates_.push_back(candidate);
        if (candidates_.size() >= 2 * limit_ + kSlack) dropSurplus();
    }
    std::vector<CardId> inOrder(Less less) {
        dropSurplus();
        std::ranges::sort(candidates_, less);
        std::vector<CardId> ids;
        ids.reserve(candidates_.size());
        for (const Candidate& candidate : candidates_) ids.push_back(candidate.card);
        return ids;
    }

private:
    static constexpr std::size_t kSlack = 64;

    void dropSurplus() {
        if (candidates_.size() <= limit_) return;
        const auto last = candidates_.begin() + static_cast<std::ptrdiff_t>(limit_) - 1;
        std::ranges::nth_element(candidates_, last, less_);
        candidates_.resize(limit_);
        last_ = candidates_.back();
    }

    std::size_t limit_;
    Less less_;
    std::vector<Candidate> candidates_;
    std::optional<Candidate> last_;
};

/// Puts each of the fewer `sparse` cards into an equal stretch of the whole: at its beginning, or in its middle.
enum class Place { beginning = 0, middle = 1 };
std::vector<CardId> spread(const std::vector<CardId>& sparse, const std::vector<CardId>& dense, Place place) {
    const std::size_t total = sparse.size() + dense.size();
    std::vector<CardId> result;
    result.reserve(total);
    std::size_t placed = 0;
    while (result.size() < total) {
        const bool isTurn = placed < sparse.size() && result.size() >= (2 * placed + static_cast<std::size_t>(place)) *
                                                                           total / (2 * sparse.size());
        if (isTurn) {
            result.push_back(sparse[placed++]);
        } else {
            result.push_back(dense[result.size() - placed]);
        }
    }
    return result;
}

}  // namespace

bool standsIn(const JournalEntry& page, const ShelfItem& place) {
    const NotebookId* const notebook = std::get_if<NotebookId>(&place);
    return notebook == nullptr ? !page.notebookID : page.notebookID == *notebook;
}

ScopePages::ScopePages(const JournalStore& library, const ReviewScope& scope) : library_(&library) {
    if (scope.place) {
        pages_.emplace();
        for (const JournalEntry& page : library.entries()) {
            if (standsIn(page, *scope.place)) pages_->insert(page.id);
        }
    }
    if (!scope.page) return;
    const std::vector<PageId> below = library.subpagesOf(*scope.page);
    pages_.emplace(below.begin(), below.end());
    pages_->insert(*scope.page);
}

ReviewQueue buildReviewQueue(const FlashcardStore& cards, const JournalStore& library, const Settings& settings,
                             const LocalCalendar& calendar, const ReviewScope& scope, Date now) {
    const bool shuffled = settings.boolean("flashcards.shuffle").value_or(true);
    const std::int64_t newLimit = cards.newCardsLeft(now);
    const std::int64_t reviewLimit = cards.reviewsLeft(now);
    const DayOrder dayOrder(calendar.civilTime(now).day);
    PageFilter filter(library, scope);

    const std::size_t all = cards.cards().size();
    Selection learning(static_cast<std::int64_t>(all), all, isEarlier);
    Selection reviews(reviewLimit, all, isEarlier);
    Selection fresh(newLimit, all, isBefore);
    std::uint64_t position = 0;
    for (const Flashcard& card : cards.cards()) {
        ++position;
        const Phase phase = card.memory.phase;
        if (card.suspended || (phase == Phase::review && card.memory.due > reviews.latestDue(now))) continue;
        const Candidate candidate{card.memory.due, shuffled ? dayOrder.of(card.id) : position, card.id};
        Selection& selection = phase == Phase::review ? reviews : phase == Phase::fresh ? fresh : learning;
        if (selection.wants(candidate) && filter.admits(card.pageID)) selection.add(candidate);
    }

    const std::vector<CardId> newCards = fresh.inOrder(isBefore);
    const std::vector<CardId> dueReviews = reviews.inOrder(shuffled ? isBefore : isEarlier);
    return {.learning = learning.inOrder(isEarlier),
            .main = newCards.size() <= dueReviews.size() ? spread(newCards, dueReviews, Place::middle)
                                                         : spread(dueReviews, newCards, Place::beginning)};
}

namespace {

/// The first day with a place for a new card can only be put off by the days that are counted.
std::optional<Date> nextIntroduction(const FlashcardStore& cards, const Settings& settings,
                                     const LocalCalendar& calendar, Date now) {
    if (settings.integer("flashcards.newPerDay").value_or(1) <= 0) return std::nullopt;
    if (cards.newCardsLeft(now) > 0) return now;
    Date day = calendar.startOfDay(now);
    for (std::size_t i = 0; i <= cards.introduced().size(); ++i) {
        day = calendar.startOfDay(calendar.addingDays(day, 1));
        if (cards.newCardsLeft(day) > 0) return day;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Date> nextReview(const FlashcardStore& cards, const JournalStore& library, const Settings& settings,
                               const LocalCalendar& calendar, const ReviewScope& scope, Date now) {
    PageFilter filter(library, scope);
    std::optional<Date> next;
    bool hasFresh = false;
    for (const Flashcard& card : cards.cards()) {
        const bool isFresh = card.memory.phase == Phase::fresh;
        const bool changesNothing = isFresh ? hasFresh : next && *next <= card.memory.due;
        if (card.suspended || changesNothing || !filter.admits(card.pageID)) continue;
        if (isFresh) {
            hasFresh = true;
        } else {
            next = card.memory.due;
        }
    }
    if (!hasFresh) return next;
    const std::optional<Date> introduction = nextIntroduction(cards, settings, calendar, now);
    return next && (!introduction || *next < *introduction) ? next : introduction;
}

}  // namespace tessary
