#pragma once

#include <optional>
#include <unordered_set>
#include <vector>

#include "library/journal_store.h"
#include "platform/clock.h"
#include "platform/settings.h"
#include "study/flashcard_store.h"

namespace tessary {

/// What to review.
struct ReviewScope {
    std::optional<PageId> page = {};      ///< this page with its subpages
    std::optional<ShelfItem> place = {};  ///< all pages that stand there; neither: the whole library
};

[[nodiscard]] bool standsIn(const JournalEntry& page, const ShelfItem& place);

/// The pages of a scope, by the tree of pages at the time this is made; a page that leaves the library is out at once.
/// Main thread only.
class ScopePages {
public:
    /// The library outlives it.
    ScopePages(const JournalStore& library, const ReviewScope& scope);

    [[nodiscard]] bool contains(PageId page) const {
        return (!pages_ || pages_->contains(page)) && library_->entries().contains(page);
    }

private:
    const JournalStore* library_;
    std::optional<std::unordered_set<PageId>> pages_;  ///< absent: all
};

/// What stands for review at one moment. Cards of pages that are gone or in the trash, and suspended ones, never do.
struct ReviewQueue {
    /// In learning or relearning, by due time: those due now and those that will be.
    std::vector<CardId> learning;
    /// Due reviews and new cards within the day's limits, new cards spread evenly among the reviews. When more reviews
    /// are due than the limit allows, it is the most overdue ones.
    std::vector<CardId> main;
};

/// Reads the limits and "flashcards.shuffle" (on unless set) from the settings. Shuffled, the order is drawn anew each
/// local day and is the same all day; otherwise reviews come by due time and new cards in the store's order. A limit
/// below 0 counts as 0. Takes a few milliseconds for a hundred thousand cards. Main thread only.
[[nodiscard]] ReviewQueue buildReviewQueue(const FlashcardStore& cards, const JournalStore& library,
                                           const Settings& settings, const LocalCalendar& calendar,
                                           const ReviewScope& scope, Date now);

/// The earliest moment at which a card of the scope falls due, past ones included; absent when none ever does. New
/// cards count from the start of the next local day on which some may be introduced; while some may be today, from
/// `now`.
[[nodiscard]] std::optional<Date> nextReview(const FlashcardStore& cards, const JournalStore& library,
                                             const Settings& settings, const LocalCalendar& calendar,
                                             const ReviewScope& scope, Date now);

}  // namespace tessary
