#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "base/plim_reaction.h"

namespace tessary {

/// What a student comes back to, as far as a greeting speaks of it.
struct GreetingMoment {
    struct ExamAhead {
        std::string title;
        int days = 0;  ///< local days until it, 0 today
    };

    int hour = 12;        ///< 0 to 23, on the wall clock
    std::size_t due = 0;  ///< cards that wait now
    bool hasCards = false;
    /// Days in a row with a review, the last of them today or yesterday; 0 when there is none.
    int streak = 0;
    bool studiedToday = false;
    std::optional<ExamAhead> exam;  ///< the nearest one to come
};

struct Greeting {
    std::string headline;  ///< as in "Good morning"
    std::string line;      ///< a sentence or two
    PlimReaction reaction = PlimReaction::wave;

    friend bool operator==(const Greeting&, const Greeting&) = default;
};

/// The day's greeting: the nearest exam first, then what is due, then the streak. It speaks of what was done and what
/// comes next; never of days that were missed.
[[nodiscard]] Greeting greet(const GreetingMoment& moment);

}  // namespace tessary
