#include "study/scheduler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace tessary {
namespace {

constexpr Date kNow{800000000};

struct GoldenStep {
    std::string phase;
    std::int64_t step;
    std::int64_t lapses;
    double dueSeconds;
    double stability;
    double difficulty;
};

struct GoldenSequence {
    std::string ratings;
    double retention;
    std::uint64_t salt;
    double waitShare;
    std::vector<GoldenStep> steps;
};

const std::vector<GoldenSequence> kGoldenSequences = {
#include "study/scheduler_golden.inc"
};

void expectClose(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-9 * std::max(1.0, std::fabs(expected)));
}

// The numbers come from scheduler_reference.py, which follows the published formulas in decimal arithmetic.
TEST(Scheduler, FollowsTheIndependentCalculation) {
    ASSERT_GT(kGoldenSequences.size(), 60U);
    for (const GoldenSequence& sequence : kGoldenSequences) {
        CardMemory memory = freshMemory(kNow);
        Date now = kNow;
        double waited = 0;
        for (std::size_t i = 0; i < sequence.steps.size(); ++i) {
            SCOPED_TRACE(sequence.ratings + " after " + std::to_string(i + 1));
            const GoldenStep& expected = sequence.steps[i];
            now = now + waited * sequence.waitShare;
            memory = schedule(memory, static_cast<Rating>(sequence.ratings[i] - '0'), now, sequence.retention,
                              sequence.salt);
            waited = memory.due - now;
            EXPECT_EQ(enumName(memory.phase), expected.phase);
            EXPECT_EQ(memory.step, expected.step);
            EXPECT_EQ(memory.lapses, expected.lapses);
            EXPECT_EQ(memory.reps, static_cast<std::int64_t>(i) + 1);
            EXPECT_EQ(memory.lastReview, now);
            EXPECT_NEAR(waited, expected.dueSeconds, 1e-3);
            expectClose(memory.stability, expected.stability);
            expectClose(memory.difficulty, expected.difficulty);
        }
    }
}

TEST(Scheduler, PreviewedIntervalsGrowFromHardToEasy) {
    for (const double stability : {0.01, 0.4, 1.0, 2.5, 10.0, 400.0, 30000.0}) {
        for (const double difficulty : {1.0, 5.5, 10.0}) {
            for (const double days : {0.0, 0.5, 1.0, 7.0, 500.0}) {
                CardMemory memory = freshMemory(kNow);
                memory.phase = CardMemory::Phase::review;
                memory.stability = stability;
                memory.difficulty = difficulty;
                memory.lastReview = kNow - days * kSecondsPerDay;
                const RatingOutcomes outcomes = previewRatings(memory, kNow, 0.9);
                const bool capped = outcomes.easy.due - kNow >= kLongestIntervalDays * kSecondsPerDay;
                EXPECT_LE(outcomes.hard.due, outcomes.good.due);
                EXPECT_TRUE(capped || outcomes.hard.due < outcomes.good.due) << stability << ' ' << days;
                EXPECT_TRUE(capped || outcomes.good.due < outcomes.easy.due) << stability << ' ' << days;
                EXPECT_LE(outcomes.easy.due - kNow, kLongestIntervalDays * kSecondsPerDay);
            }
        }
    }
}

TEST(Scheduler, FuzzStaysWithinFivePercentAndLeavesShortIntervalsAlone) {
    CardMemory memory = freshMemory(kNow);
    memory.phase = CardMemory::Phase::relearning;
    memory.difficulty = 5;
    for (std::uint64_t salt = 0; salt < 2000; ++salt) {
        for (const double days : {1.0, 2.0, 3.0, 100.0, 36500.0}) {
            memory.stability = days;
            const double waited = (schedule(memory, Rating::good, kNow, 0.9, salt).due - kNow) / kSecondsPerDay;
            if (days < 3) {
                EXPECT_EQ(waited, days);
            } else {
                EXPECT_LE(std::fabs(waited - days), std::round(days * 0.05) + 0.5);
            }
            EXPECT_LE(waited, kLongestIntervalDays);
        }
    }
}

TEST(Scheduler, ClockSetBackCountsAsNoTime) {
    CardMemory memory = freshMemory(kNow);
    memory.phase = CardMemory::Phase::review;
    memory.stability = 10;
    memory.difficulty = 5;
    memory.lastReview = kNow + 5 * kSecondsPerDay;
    EXPECT_EQ(retrievability(memory, kNow), 1);
    EXPECT_GE(schedule(memory, Rating::good, kNow, 0.9, 0).stability, 10);
}

TEST(SchedulerDeathTest, OverflowStopsTheProgram) {
    CardMemory memory = freshMemory(kNow);
    memory.reps = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(static_cast<void>(schedule(memory, Rating::good, kNow, 0.9, 0)), "");
    memory.reps = -1;
    EXPECT_DEATH(static_cast<void>(schedule(memory, Rating::good, kNow, 0.9, 0)), "");
}

TEST(FormatInterval, PicksTheUnitAndRoundsHalfUp) {
    const std::vector<std::pair<double, std::string>> cases = {
        {0, "1m"},
        {60, "1m"},
        {90, "2m"},
        {600, "10m"},
        {3599, "60m"},
        {3600, "1h"},
        {5400, "2h"},
        {86399, "24h"},
        {86400, "1d"},
        {2.5 * 86400, "3d"},
        {29.4 * 86400, "29d"},
        {30 * 86400.0, "1mo"},
        {45 * 86400.0, "1.5mo"},
        {365 * 86400.0, "1y"},
        {36500 * 86400.0, "100y"},
    };
    for (const auto& [seconds, label] : cases) EXPECT_EQ(formatInterval(seconds), label) << seconds;
}

// FNV-1a with this start value, computed by hand over one identifier in Python.
TEST(IdentityHash, KeepsItsStartValue) {
    const CardId id = *CardId::parse("00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(identityHash(id), 0x00134F750754F24FULL);
}

}  // namespace
}  // namespace tessary
