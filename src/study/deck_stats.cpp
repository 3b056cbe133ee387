#include "study/deck_stats.h"

#include "study/scheduler.h"

namespace tessary {

/// Suspended cards count as suspended only, not by phase or as due.
void DeckTally::add(const Flashcard& card) {
    ++counts_.total;
    if (card.flagged) ++counts_.flagged;
    if (leechLapses_ > 0 && card.memory.lapses >= leechLapses_) ++counts_.leeches;
    if (card.memory.lastReview) {
        recall_ += retrievability(card.memory, now_);
        ++reviewed_;
    }
    if (card.suspended) {
        ++counts_.suspended;
        return;
    }
    switch (card.memory.phase) {
        case CardMemory::Phase::fresh: ++counts_.fresh; break;
        case CardMemory::Phase::learning:
        case CardMemory::Phase::relearning: ++counts_.learning; break;
        case CardMemory::Phase::review: ++counts_.review; break;
    }
    if (card.memory.due <= now_) ++counts_.due;
}

FlashcardDeckStats DeckTally::stats() const {
    FlashcardDeckStats stats = counts_;
    if (reviewed_ > 0) stats.averageRecall = recall_ / static_cast<double>(reviewed_);
    return stats;
}

}  // namespace tessary
