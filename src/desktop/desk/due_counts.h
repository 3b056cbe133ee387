#pragma once

#include <unordered_map>

#include "study/flashcard_store.h"

namespace tessary {

/// Cards that wait for review now, by page. One pass over all cards.
[[nodiscard]] inline std::unordered_map<PageId, int> dueCounts(const FlashcardStore& cards, Date now) {
    std::unordered_map<PageId, int> counts;
    for (const Flashcard& card : cards.cards()) {
        if (!card.suspended && card.memory.due <= now) ++counts[card.pageID];
    }
    return counts;
}

}  // namespace tessary
