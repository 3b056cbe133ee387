#include "companion/plim_controller.h"

#include <limits>

#include "companion/plim_sampling.h"
#include "companion_fixture.h"

namespace tessary {
namespace {

constexpr double kTick = 1.0 / 64;  // seconds, adds up without rounding
constexpr int kTicksOfBlend = 18;   // the first tick at which a fade is over

/// A controller and the display's clock.
struct Display {
    PlimController controller;
    Date now{1000};

    Display() { controller.tick(now); }

    void tick(PlimTick force = PlimTick::unlessFrozen) {
        now = now + kTick;
        controller.tick(now, force);
    }
    /// Ticks until nothing moves any more; how many there were.
    int ticksUntilFrozen() {
        int ticks = 0;
        while (!controller.frozen() && ticks < 5000) {
            tick();
            ++ticks;
        }
        return ticks;
    }
};

struct Hold {
    PlimReaction reaction;
    double seconds;
};

const std::vector<Hold> kHolds{{PlimReaction::idle, 8},  {PlimReaction::wave, 8},  {PlimReaction::cur, 7.8},
                               {PlimReaction::think, 8}, {PlimReaction::study, 8}, {PlimReaction::win, 8},
                               {PlimReaction::fail, 8},  {PlimReaction::sleep, 8}};

TEST(HoldTime, OfEveryReaction) {
    for (const auto& [reaction, seconds] : kHolds) {
        EXPECT_NEAR(holdTime(plimSpec().reaction(reaction)), seconds, 1e-12) << nameOf(reaction);
    }
    for (const auto& [loop, seconds] : std::vector<std::pair<std::string, double>>{
             {"[0,1]", 3}, {"[1,2.5]", 5.5}, {"[0,100]", 8}, {"[3,1]", 8}, {"[2,2]", 8}, {"[1]", 8}, {"[0,1,2]", 8}}) {
        const PlimSpec spec = specOf(reactionText("idle", "\"loop\":" + loop));
        EXPECT_EQ(holdTime(spec.reaction(PlimReaction::idle)), seconds) << loop;
    }
}

TEST(PlimController, ALoopFreezesAfterItsHoldTime) {
    for (const auto& [reaction, seconds] : kHolds) {
        if (!plimSpec().reaction(reaction).loopRange()) continue;
        Display display;
        display.controller.play(reaction);
        const int ticks = kTicksOfBlend - 1 + static_cast<int>(std::ceil(seconds / kTick));
        EXPECT_EQ(display.ticksUntilFrozen(), ticks) << nameOf(reaction);
        EXPECT_EQ(display.controller.player().t(), ticks * kTick) << nameOf(reaction);
    }
}

TEST(PlimController, WhatEndsNeverFreezesButItsBaseDoes) {
    for (const PlimReaction reaction : {PlimReaction::wave, PlimReaction::win, PlimReaction::fail}) {
        Display display;
        display.controller.play(reaction);
        while (display.controller.player().current() == reaction) {
            display.tick();
            ASSERT_EQ(display.controller.awake(), 0);
            ASSERT_LT(display.controller.player().time(), 3);
        }
        EXPECT_EQ(display.ticksUntilFrozen(), kTicksOfBlend - 1 + static_cast<int>(8 / kTick)) << nameOf(reaction);
        EXPECT_EQ(display.controller.player().current(), PlimReaction::idle);
    }
}

TEST(PlimController, FrozenItMovesOnlyWhenForcedOrPlayed) {
    Display display;
    PlimController& controller = display.controller;
    display.ticksUntilFrozen();
    int published = 0;
    const Subscription heard = controller.changed().connect([&] { ++published; });
    const PlimFrame shown = controller.frame();
    const double t = controller.player().t();
    for (int i = 0; i < 100; ++i) display.tick();
    EXPECT_EQ(controller.player().t(), t);
    EXPECT_EQ(controller.frame(), shown);
    EXPECT_EQ(published, 0);

    display.tick(PlimTick::forced);
    EXPECT_EQ(controller.player().t(), t + 0.1) << "the pause counts as no more than a long tick";
    EXPECT_EQ(published, 1);
    display.tick();
    EXPECT_EQ(controller.player().t(), t + 0.1);
    EXPECT_TRUE(controller.frozen());

    controller.play(PlimReaction::idle);
    EXPECT_FALSE(controller.frozen());
    EXPECT_EQ(controller.awake(), 0);
    EXPECT_EQ(published, 2) << "who waits for the end of a freeze hears of it";
    EXPECT_EQ(controller.player().t(), t + 0.1) << "the running loop goes on";
    EXPECT_EQ(display.ticksUntilFrozen(), static_cast<int>(8 / kTick) - 1) << "the first tick spans two";
}

TEST(PlimController, ANewReactionGetsItsWholeTime) {
    Display display;
    for (int i = 0; i < 500; ++i) display.tick();
    EXPECT_GT(display.controller.awake(), 7);
    display.controller.play(PlimReaction::study);
    EXPECT_EQ(display.controller.awake(), 0);
    EXPECT_EQ(display.ticksUntilFrozen(), kTicksOfBlend - 1 + static_cast<int>(8 / kTick));
}

TEST(PlimController, PublishesWhatThePlayerShows) {
    Display display;
    PlimController& controller = display.controller;
    EXPECT_EQ(controller.frame(), plimFrame(PlimReaction::idle, 0));
    std::vector<double> heard;
    const Subscription observer =
        controller.changed().connect([&] { heard.push_back(controller.frame().pose.at("dy")); });
    controller.play(PlimReaction::win);
    for (int i = 0; i < 200; ++i) {
        display.tick();
        ASSERT_EQ(controller.frame(), controller.player().frame());
        ASSERT_EQ(heard.back(), controller.frame().pose.at("dy"));
    }
    EXPECT_EQ(heard.size(), 201U);
    controller.tick(display.now);
    EXPECT_EQ(heard.size(), 201U) << "no time has passed";
}

TEST(PlimController, SpeedScalesEveryTick) {
    Display fast;
    fast.controller.setSpeed(2);
    fast.controller.play(PlimReaction::think);
    const int ticks = fast.ticksUntilFrozen();
    EXPECT_EQ(ticks, kTicksOfBlend / 2 - 1 + static_cast<int>(8 / kTick / 2));
    EXPECT_EQ(fast.controller.player().t(), 2 * ticks * kTick);
    for (const double none : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        Display still;
        still.controller.play(PlimReaction::fail);
        const PlimFrame shown = still.controller.frame();
        still.controller.setSpeed(none);
        for (int i = 0; i < 100; ++i) still.tick();
        EXPECT_EQ(still.controller.frame(), shown) << none;
        still.controller.setSpeed(1);
        still.tick();
        EXPECT_EQ(still.controller.player().t(), kTick) << none;
    }
}

TEST(PlimController, ItsBaseIsWhereReactionsReturn) {
    Display display;
    display.controller.setBase(PlimReaction::study);
    display.controller.play(PlimReaction::win);
    for (int i = 0; i < 140; ++i) display.tick();
    EXPECT_EQ(display.controller.player().current(), PlimReaction::study);
}

}  // namespace
}  // namespace tessary
