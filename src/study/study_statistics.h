#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <stop_token>
#include <utility>
#include <vector>

#include "library/journal_store.h"
#include "platform/clock.h"
#include "study/flashcard_store.h"

/// What there is to tell of learning as a whole. Pure functions over snapshots, for a thread of their own; stopped,
/// they give what they have come to.
namespace tessary {

/// The cards as they stand.
struct StudyStatistics {
    static constexpr std::size_t kRecallSteps = 10;

    FlashcardDeckStats total;  ///< cards of live pages only, as everything here
    std::vector<std::pair<ShelfItem, FlashcardDeckStats>> decks;  ///< that have a card, in no particular order
    /// Cards that were rated before and are not suspended, by the day they fall due, today first; those that fell due
    /// before count as today's.
    std::vector<std::int64_t> forecast;
    std::int64_t overdue = 0;  ///< of today's, those that fell due before today
    /// Reviewed cards by their chance of recall now, in steps of a tenth from 0 on; 1 belongs to the last.
    std::array<std::int64_t, kRecallSteps> recall{};
};

struct StudyMaterial {
    RecordList<Flashcard>::Snapshot cards;
    RecordList<JournalEntry>::Snapshot pages;
    std::int64_t leechLapses = 0;
};

[[nodiscard]] StudyStatistics studyStatistics(const StudyMaterial& material, const LocalCalendar& calendar, Date now,
                                              std::size_t forecastDays, std::stop_token stop = {});

/// What was reviewed on each day of about a year.
struct ReviewHistory {
    static constexpr int kWeeks = 53;
    static constexpr int kRetentionDays = 30;

    struct Day {
        CivilDay day;
        std::int64_t reviews = 0;
    };
    std::vector<Day> days;  ///< from a Monday to today, today's week being the last of `kWeeks`
    std::int64_t reviews = 0;
    std::int64_t activeDays = 0;
    std::int64_t longestStreak = 0;  ///< days on end with a review
    std::int64_t streak = 0;  ///< that lasts: up to today, or to yesterday as long as today has none
    /// Of the reviews in the last 30 days, those of cards past their learning steps, and which of them were remembered.
    std::int64_t tested = 0;
    std::int64_t remembered = 0;
};

/// The first moment that a history at `now` tells of.
[[nodiscard]] Date historyStart(const LocalCalendar& calendar, Date now);

/// Ratings that were taken back do not count. `log` is in the order in which it was written.
[[nodiscard]] ReviewHistory reviewHistory(std::span<const ReviewLogEntry> log, const LocalCalendar& calendar, Date now);

}  // namespace tessary
