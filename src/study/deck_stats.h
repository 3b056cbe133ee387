#pragma once

#include <cstdint>
#include <optional>

#include "study/flashcard.h"

namespace tessary {

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

/// Adds up the counts of a deck, card by card. Any thread, one at a time.
class DeckTally {
public:
    /// Without a limit of lapses, 0 or less, no card is a leech.
    DeckTally(Date now, std::int64_t leechLapses) : now_(now), leechLapses_(leechLapses) {}

    void add(const Flashcard& card);
    [[nodiscard]] FlashcardDeckStats stats() const;

private:
    Date now_;
    std::int64_t leechLapses_;
    FlashcardDeckStats counts_;
    double recall_ = 0;
    std::int64_t reviewed_ = 0;
};

}  // namespace tessary
