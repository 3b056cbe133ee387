#pragma once

#include <cstdint>
#include <string>

#include "platform/settings.h"
#include "study/flashcard.h"

/// The FSRS-5 model of memory (open-spaced-repetition, "The algorithm", version 5, default weights) with fixed learning
/// steps, an interval cap and a small deterministic fuzz. Pure functions: the same arguments give the same result.
namespace tessary {

inline constexpr double kLongestIntervalDays = 36500;
inline constexpr double kDefaultRetention = 0.9;

enum class Fuzz { on, off };

/// What `rating` at `now` makes of a memory. `retention` is the recall probability to aim at, 0.7 to 0.97; `salt` is
/// the card's identity hash. More than 2^63 - 1 ratings or lapses, and a negative `reps`, stop the program.
[[nodiscard]] CardMemory schedule(CardMemory memory, Rating rating, Date now, double retention, std::uint64_t salt,
                                  Fuzz fuzz = Fuzz::on);

struct RatingOutcomes {
    CardMemory again;
    CardMemory hard;
    CardMemory good;
    CardMemory easy;
};

/// What each rating would make of a memory, for the labels of the rating buttons: without fuzz, so that Hard, Good and
/// Easy differ. A rating is scheduled anew, never taken from here.
[[nodiscard]] RatingOutcomes previewRatings(const CardMemory& memory, Date now, double retention);

/// Recall probability at `now`: R = (1 + 19/81 · t / S) ^ -0.5, with t in days since the last review.
[[nodiscard]] double retrievability(const CardMemory& memory, Date now);

/// FNV-1a over the text form of the identifier, with a start value of its own that must never change: the fuzz of every
/// existing card depends on it.
[[nodiscard]] std::uint64_t identityHash(CardId id);

/// The setting "flashcards.retention" within 0.7 to 0.97; 0.9 when unset.
[[nodiscard]] double desiredRetention(const Settings& settings);

/// The short label of a span: "1m", "10m", "5h", "3d", "1.5mo", "2y".
[[nodiscard]] std::string formatInterval(double seconds);

}  // namespace tessary
