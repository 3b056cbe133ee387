#include "study/scheduler.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace tessary {
namespace {

using Phase = CardMemory::Phase;

constexpr std::array<double, 19> kWeights = {0.40255, 1.18385, 3.173,  15.69105, 7.1949, 0.5345, 1.4604,
                                             0.0046,  1.54575, 0.1192, 1.01925,  1.9395, 0.11,   0.29605,
                                             2.2698,  0.2315,  2.9898, 0.51655,  0.6621};
constexpr double kFactor = 19.0 / 81.0;
constexpr double kLeastStability = 0.01;  // days
constexpr double kLeastEasyDays = 4;
constexpr double kFuzzShare = 0.05;
constexpr double kLeastFuzzedDays = 3;
constexpr std::array<double, 2> kLearningStepMinutes = {1, 10};
constexpr double kHardFirstStepMinutes = 6;
constexpr double kRelearningStepMinutes = 10;

int number(Rating rating) { return static_cast<int>(rating); }

std::int64_t incremented(std::int64_t count) {
    if (count == std::numeric_limits<std::int64_t>::max()) std::abort();
    return count + 1;
}

double initialDifficulty(int g) { return std::clamp(kWeights[4] - std::exp(kWeights[5] * (g - 1)) + 1, 1.0, 10.0); }

double nextDifficulty(double difficulty, Rating rating) {
    const double delta = -kWeights[6] * (number(rating) - 3);
    const double damped = difficulty + delta * (10 - difficulty) / 9;
    const double reverted = kWeights[7] * initialDifficulty(number(Rating::easy)) + (1 - kWeights[7]) * damped;
    return std::clamp(reverted, 1.0, 10.0);
}

/// After a success in the review phase, at recall probability `recall`.
double stabilityAfterRecall(const CardMemory& memory, Rating rating, double recall) {
    const double hardPenalty = rating == Rating::hard ? kWeights[15] : 1;
    const double easyBonus = rating == Rating::easy ? kWeights[16] : 1;
    const double growth = std::exp(kWeights[8]) * (11 - memory.difficulty) * std::pow(memory.stability, -kWeights[9]) *
                          (std::exp(kWeights[10] * (1 - recall)) - 1) * hardPenalty * easyBonus;
    return std::max(memory.stability * (1 + growth), kLeastStability);
}

/// After a lapse. On purpose nothing but the old stability bounds it.
double stabilityAfterLapse(const CardMemory& memory, double recall) {
    const double forgotten = kWeights[11] * std::pow(memory.difficulty, -kWeights[12]) *
                             (std::pow(memory.stability + 1, kWeights[13]) - 1) * std::exp(kWeights[14] * (1 - recall));
    return std::max(std::min(forgotten, memory.stability), kLeastStability);
}

/// After a rating on the day of the last one. Good and Easy never lower it; Again never raises it.
double stabilityOnSameDay(double stability, Rating rating) {
    const double scaled = stability * std::exp(kWeights[17] * (number(rating) - 3 + kWeights[18]));
    const bool success = rating == Rating::good || rating == Rating::easy;
    const double bounded = success                   ? std::max(scaled, stability)
                           : rating == Rating::again ? std::min(scaled, stability)
                                                     : scaled;
    return std::max(bounded, kLeastStability);
}

/// Whole days until recall falls to `retention`.
double intervalDays(double stability, double retention) {
    const double days = std::max(stability, kLeastStability) / kFactor * (std::pow(retention, -2) - 1);
    return std::clamp(std::round(days), 1.0, kLongestIntervalDays);
}

double easyIntervalDays(double stability, double retention) {
    return std::max(intervalDays(stability, retention), kLeastEasyDays);
}

double elapsedDays(const CardMemory& memory, Date now) {
    return memory.lastReview ? std::max((now - *memory.lastReview) / kSecondsPerDay, 0.0) : 0.0;
}

/// One rating in the making: what every phase shares.
class Scheduling {
public:
    Scheduling(CardMemory memory, Rating rating, Date now, double retention, std::uint64_t salt, Fuzz fuzz)
        : old_(memory), next_(memory), rating_(rating), now_(now), retention_(retention), salt_(salt), fuzz_(fuzz) {
        if (memory.reps < 0) std::abort();
        next_.reps = incremented(memory.reps);
        next_.lastReview = now;
    }

    CardMemory run() {
        switch (old_.phase) {
            case Phase::fresh: rateFresh(); break;
            case Phase::learning: rateLearning(); break;
            case Phase::review: rateReview(); break;
            case Phase::relearning: rateRelearning(); break;
        }
        return next_;
    }

private:
    void rateFresh() {
        next_.stability = std::max(kWeights[static_cast<std::size_t>(number(rating_) - 1)], kLeastStability);
        next_.difficulty = initialDifficulty(number(rating_));
        switch (rating_) {
            case Rating::again: return learn(0, kLearningStepMinutes[0]);
            case Rating::hard: return learn(0, kHardFirstStepMinutes);
            case Rating::good: return learn(1, kLearningStepMinutes[1]);
            case Rating::easy: return review(easyIntervalDays(next_.stability, retention_));
        }
    }

    void rateLearning() {
        next_.stability = stabilityOnSameDay(old_.stability, rating_);
        next_.difficulty = nextDifficulty(old_.difficulty, rating_);
        switch (rating_) {
            case Rating::again: return learn(0, kLearningStepMinutes[0]);
            case Rating::hard:
                return learn(old_.step, old_.step == 0 ? kHardFirstStepMinutes : kLearningStepMinutes[1]);
            case Rating::good: {
                const std::int64_t step = incremented(old_.step);
                if (step >= std::ssize(kLearningStepMinutes)) return review(intervalDays(next_.stability, retention_));
                return learn(step, kLearningStepMinutes[static_cast<std::size_t>(step)]);
            }
            case Rating::easy: return review(easyIntervalDays(next_.stability, retention_));
        }
    }

    void rateReview() {
        next_.difficulty = nextDifficulty(old_.difficulty, rating_);
        if (rating_ == Rating::again) {
            next_.stability = stabilityAfterLapse(old_, retrievability(old_, now_));
            next_.lapses = incremented(old_.lapses);
            return relearn();
        }
        next_.stability = stabilityAfterSuccess(rating_);
        const double forGood = intervalDays(stabilityAfterSuccess(Rating::good), retention_);
        const double hard = std::min(intervalDays(stabilityAfterSuccess(Rating::hard), retention_), forGood);
        if (rating_ == Rating::hard) return review(hard);
        const double good = std::max(forGood, hard + 1);
        if (rating_ == Rating::good) return review(good);
        review(std::max(intervalDays(next_.stability, retention_), good + 1));
    }

    void rateRelearning() {
        next_.difficulty = nextDifficulty(old_.difficulty, rating_);
        if (rating_ == Rating::again || rating_ == Rating::hard) return relearn();
        review(intervalDays(next_.stability, retention_));
    }

    double stabilityAfterSuccess(Rating rating) const {
        if (elapsedDays(old_, now_) < 1) return stabilityOnSameDay(old_.stability, rating);
        return stabilityAfterRecall(old_, rating, retrievability(old_, now_));
    }

    void learn(std::int64_t step, double minutes) {
        next_.phase = Phase::learning;
        next_.step = step;
        next_.due = now_ + minutes * kSecondsPerMinute;
    }

    void relearn() {
        next_.phase = Phase::relearning;
        next_.step = 0;
        next_.due = now_ + kRelearningStepMinutes * kSecondsPerMinute;
    }

    void review(double days) {
        next_.phase = Phase::review;
        next_.step = 0;
        next_.due = now_ + fuzzed(days) * kSecondsPerDay;
    }

    /// The order of the three intervals comes first, then the fuzz, and the cap last of all.
    double fuzzed(double days) const {
        if (fuzz_ == Fuzz::off || days < kLeastFuzzedDays) return std::clamp(days, 1.0, kLongestIntervalDays);
        const std::uint64_t seed = static_cast<std::uint64_t>(next_.reps) * 0x9E3779B1ULL + salt_;
        const double unit = static_cast<double>(seed % 1001) / 1000;
        return std::clamp(std::round(days * (1 + (2 * unit - 1) * kFuzzShare)), 1.0, kLongestIntervalDays);
    }

    const CardMemory old_;
    CardMemory next_;
    const Rating rating_;
    const Date now_;
    const double retention_;
    const std::uint64_t salt_;
    const Fuzz fuzz_;
};

/// One decimal, without a trailing ".0".
std::string shortDecimal(double value) {
    std::string text = fmt::format("{:.1f}", value);
    if (text.ends_with(".0")) text.resize(text.size() - 2);
    return text;
}

std::string wholeUnits(double value, char unit) {
    return fmt::format("{}{}", static_cast<std::int64_t>(std::max(std::round(value), 1.0)), unit);
}

}  // namespace

CardMemory schedule(CardMemory memory, Rating rating, Date now, double retention, std::uint64_t salt, Fuzz fuzz) {
    return Scheduling(memory, rating, now, retention, salt, fuzz).run();
}

RatingOutcomes previewRatings(const CardMemory& memory, Date now, double retention) {
    const auto outcome = [&](Rating rating) { return schedule(memory, rating, now, retention, 0, Fuzz::off); };
    return {outcome(Rating::again), outcome(Rating::hard), outcome(Rating::good), outcome(Rating::easy)};
}

double retrievability(const CardMemory& memory, Date now) {
    return std::pow(1 + kFactor * elapsedDays(memory, now) / std::max(memory.stability, kLeastStability), -0.5);
}

std::uint64_t identityHash(CardId id) {
    std::uint64_t hash = 1469598103934665603ULL;
    for (const char c : id.toString()) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
    }
    return hash;
}

double desiredRetention(const Settings& settings) {
    return std::clamp(settings.number("flashcards.retention").value_or(kDefaultRetention), 0.7, 0.97);
}

std::string formatInterval(double seconds) {
    if (seconds < 3600) return wholeUnits(seconds / 60, 'm');
    if (seconds < kSecondsPerDay) return wholeUnits(seconds / 3600, 'h');
    const double days = seconds / kSecondsPerDay;
    if (days < 30) return wholeUnits(days, 'd');
    if (days < 365) return shortDecimal(days / 30) + "mo";
    return shortDecimal(days / 365) + "y";
}

}  // namespace tessary
