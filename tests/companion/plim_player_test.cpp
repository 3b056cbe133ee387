#include "companion/plim_player.h"

#include <limits>
#include <random>
#include <sstream>

#include "base/text.h"
#include "companion/plim_sampling.h"
#include "companion_fixture.h"

namespace tessary {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kStep = 1.0 / 240;  // seconds, a tick of a fast display

struct GoldenScene {
    std::string script;
    std::vector<double> fingerprints;
};

const std::vector<GoldenScene> kGoldenScenes = {
#include "companion/plim_scenes_golden.inc"
};

TEST(PlimPlayer, FollowsTheIndependentCalculation) {
    ASSERT_GT(kGoldenScenes.size(), 64U);
    for (const GoldenScene& scene : kGoldenScenes) {
        const std::vector<std::string_view> script = split(scene.script, ' ');
        ASSERT_EQ(script.size(), scene.fingerprints.size());
        PlimPlayer player;
        for (std::size_t i = 0; i < script.size(); ++i) {
            if (const auto reaction = plimReactionNamed(script[i])) {
                player.play(*reaction);
            } else {
                player.advance(*parseNumber<double>(script[i]) / 64);
            }
            EXPECT_NEAR(fingerprint(player.frame()), scene.fingerprints[i], 2e-9)
                << scene.script << ", after " << i + 1;
        }
    }
}

/// In small steps, as a display does it: reactions that end hand over on the way.
void watch(PlimPlayer& player, double seconds) {
    for (int i = 0; i < static_cast<int>(seconds / kStep); ++i) player.advance(kStep);
}

double difference(const std::string& channel, double a, double b) {
    return channel == "rot" ? turn(a, b) : std::fabs(a - b);
}

/// The most that a channel may change in one step of a fade from `old` into `reaction`: what the reaction moves by
/// itself, and the share of the way between the two that the fade makes where it is fastest.
std::map<std::string, double> mostInOneStep(const PlimFrame& old, PlimReaction reaction, double seconds) {
    std::map<std::string, double> motion;
    std::map<std::string, double> gap;
    for (double t = 0; t < seconds; t += kStep) {
        const PlimFrame frame = plimFrame(reaction, t);
        const PlimFrame next = plimFrame(reaction, t + kStep);
        for (const auto& [channel, value] : frame.pose) {
            motion[channel] = std::max(motion[channel], std::fabs(next.pose.at(channel) - value));
            const double from = channel == "rot" ? std::remainder(old.pose.at(channel), 360) : old.pose.at(channel);
            gap[channel] = std::max(gap[channel], std::fabs(value - from));
        }
    }
    constexpr double kSteepestFade = 3;  // of the cubic in-out, in the middle
    for (auto& [channel, most] : motion) most += gap[channel] * kSteepestFade * kStep / kBlend + 1e-9;
    return motion;
}

void expectSteadyFade(PlimReaction first, double moment, PlimReaction second) {
    const std::string what = nameOf(first) + " for " + std::to_string(moment) + " into " + nameOf(second);
    PlimPlayer player;
    player.play(first);
    watch(player, moment);
    PlimFrame shown = player.frame();
    player.play(second);
    expectSamePose(player.frame(), shown, what);
    const double seconds = kBlend + 0.2;
    const auto most = mostInOneStep(shown, second, player.t() + seconds);
    for (double waited = 0; waited < seconds; waited += kStep) {
        player.advance(kStep);
        const PlimFrame next = player.frame();
        for (const auto& [channel, value] : next.pose) {
            EXPECT_LE(difference(channel, value, shown.pose.at(channel)), most.at(channel))
                << what << ' ' << channel << " after " << waited;
        }
        shown = next;
    }
}

TEST(PlimPlayer, FadesWithoutAJumpBetweenAllPairs) {
    for (const PlimReaction first : kReactions) {
        for (const PlimReaction second : kReactions) {
            // A loop that runs is not restarted: what is seen is its own motion.
            const bool stays = first == second && plimSpec().reaction(first).loopRange();
            for (const double moment : {0.1, 0.7, 1.7, 2.5}) {
                if (!stays) expectSteadyFade(first, moment, second);
            }
        }
    }
}

/// The effects that can be seen, each with its opacity.
std::vector<FzFx> visible(const PlimFrame& frame) {
    std::vector<FzFx> seen;
    for (FzFx effect : frame.fx) {
        if (effect.v.try_emplace("a", 1).first->second >= 0.01) seen.push_back(std::move(effect));
    }
    return seen;
}

TEST(PlimPlayer, FadesBegunDuringFadesStartFromWhatIsSeen) {
    std::mt19937 random(7);
    PlimPlayer player;
    std::size_t inFades = 0;
    for (int i = 0; i < 3000; ++i) {
        player.advance(static_cast<double>(random() % 1000) / 2500);
        if (player.snap()) ++inFades;
        const PlimFrame before = player.frame();
        const PlimReaction reaction = kReactions[random() % kReactions.size()];
        player.play(reaction);
        const PlimFrame after = player.frame();
        const std::string what = std::to_string(i) + " " + nameOf(reaction);
        ASSERT_NO_FATAL_FAILURE(expectSamePose(after, before, what));
        ASSERT_EQ(after.steps, before.steps) << what;
        ASSERT_EQ(visible(after), visible(before)) << what;
    }
    EXPECT_GT(inFades, 1000U);
}

TEST(PlimPlayer, PlayingAgainAndAgainPilesUpNothing) {
    for (const double pause : {0.0, 0.001, 1.0 / 60, 0.1, 0.2}) {
        PlimPlayer player;
        for (int i = 0; i < 5000; ++i) {
            player.play(i % 2 == 0 ? PlimReaction::win : PlimReaction::cur);
            player.advance(pause);
        }
        const PlimFrame frame = player.frame();
        EXPECT_LE(frame.fx.size(), 20U) << pause;
        for (const auto& [channel, value] : frame.pose) EXPECT_TRUE(std::isfinite(value)) << channel;
        player.advance(1);
        EXPECT_EQ(player.frame(), plimFrame(player.current(), player.t())) << "nothing is left after the fade";
    }
}

TEST(PlimPlayer, AnySplitOfTheTimeShowsTheSame) {
    for (const PlimReaction reaction : kReactions) {
        const double total = plimSpec().reaction(reaction).loopRange() ? 11.3 : 1.93;
        PlimPlayer whole;
        whole.play(reaction);
        whole.advance(total);
        const PlimFrame expected = whole.frame();
        for (const int pieces : {2, 7, 60, 5000}) {
            PlimPlayer split;
            split.play(reaction);
            double left = total;
            for (int i = 1; i < pieces; ++i) {
                const double piece = total * 2 * i / pieces / pieces;  // ever longer
                split.advance(piece);
                left -= piece;
            }
            split.advance(left);
            const PlimFrame actual = split.frame();
            expectSamePose(actual, expected, nameOf(reaction));
            EXPECT_EQ(actual.steps, expected.steps);
            EXPECT_NEAR(fingerprint(actual), fingerprint(expected), 1e-8) << nameOf(reaction) << ' ' << pieces;
        }
    }
}

TEST(PlimPlayer, WhatEndsHandsBackToTheBase) {
    for (const PlimReaction base : {PlimReaction::idle, PlimReaction::think, PlimReaction::wave}) {
        for (const PlimReaction reaction : {PlimReaction::wave, PlimReaction::win, PlimReaction::fail}) {
            const std::string what = nameOf(reaction) + " to " + nameOf(base);
            const double dur = plimSpec().reaction(reaction).dur;
            PlimPlayer player;
            player.setBase(base);
            player.play(reaction);
            player.advance(dur - 0.01);
            EXPECT_EQ(player.current(), reaction) << what;
            player.advance(0.05);
            EXPECT_EQ(player.current(), base) << what;
            EXPECT_EQ(player.t(), 0) << what;
            expectSamePose(player.frame(), plimFrame(reaction, dur), what);
            player.advance(kBlend / 2);
            EXPECT_NE(player.frame().pose, plimFrame(base, kBlend / 2).pose) << what;
            player.advance(kBlend);
            EXPECT_FALSE(player.snap()) << what;
            EXPECT_EQ(player.frame(), plimFrame(base, player.t())) << what;
        }
    }
}

TEST(PlimPlayer, ARunningLoopIsNotRestarted) {
    PlimPlayer player;
    player.play(PlimReaction::think);
    player.advance(5);
    player.play(PlimReaction::think);
    EXPECT_EQ(player.t(), 5);
    EXPECT_FALSE(player.snap());
    player.play(PlimReaction::win);
    player.advance(0.5);
    const PlimFrame shown = player.frame();
    player.play(PlimReaction::win);
    EXPECT_EQ(player.t(), 0);
    EXPECT_EQ(player.bt(), 0);
    EXPECT_EQ(player.time(), 5.5);
    expectSamePose(player.frame(), shown, "win into win");
    // What only looks like a loop is not one.
    const PlimSpec odd = specOf(reactionText("idle", R"("loop":[1,1])"));
    PlimPlayer other(odd);
    other.advance(1);
    other.play(PlimReaction::idle);
    EXPECT_EQ(other.t(), 0);
}

TEST(PlimPlayer, AWholeTurnIsNotTurnedBack) {
    PlimPlayer player;
    player.play(PlimReaction::win);
    player.advance(1.99);
    EXPECT_EQ(player.frame().pose.at("rot"), -370);
    player.advance(0.02);
    ASSERT_TRUE(player.snap());
    EXPECT_EQ(player.snap()->pose.at("rot"), -10);
    for (const auto& [rot, wrapped] : std::vector<std::pair<std::string, double>>{{"0", 0},
                                                                                  {"179", 179},
                                                                                  {"180", -180},
                                                                                  {"-180", -180},
                                                                                  {"190", -170},
                                                                                  {"-190", 170},
                                                                                  {"359", -1},
                                                                                  {"540", -180},
                                                                                  {"-730", -10}}) {
        const PlimSpec turned =
            specOf(reactionText("idle", "") + "," + reactionText("wave", ""), "{\"rot\":" + rot + "}");
        PlimPlayer other(turned);
        other.play(PlimReaction::wave);
        EXPECT_EQ(other.snap()->pose.at("rot"), wrapped) << rot;
    }
    const PlimSpec still = specOf(reactionText("idle", ""), "{}");
    PlimPlayer other(still);
    other.play(PlimReaction::idle);
    EXPECT_EQ(other.snap()->pose, (std::map<std::string, double>{{"rot", 0}}));
    EXPECT_TRUE(other.frame().pose.empty()) << "only what the reaction has is drawn";
}

TEST(PlimPlayer, TheFaceChangesInTheMiddleOfAFade) {
    PlimPlayer player;
    player.play(PlimReaction::win);
    player.advance(1);
    player.play(PlimReaction::study);
    player.advance(kBlend * std::cbrt(0.1));  // w = 0.4
    EXPECT_EQ(player.frame().steps.at("mouth"), "grin");
    EXPECT_EQ(player.frame().steps.at("eye"), "happy");
    player.advance(kBlend / 2 - player.bt());  // w = 0.5
    EXPECT_EQ(player.frame().steps.at("mouth"), "smile");
    EXPECT_EQ(player.frame().steps.at("eye"), "open");
}

TEST(PlimPlayer, FadesOpacitiesOfEffects) {
    const std::string spark = R"("fx":[{"type":"spark","tracks":{"s":[[0,2]]}},{"type":"gone","v":{"a":0}}])";
    const std::string drop = R"("fx":[{"type":"drop","v":{"a":0.5}}])";
    const PlimSpec spec = specOf(reactionText("idle", spark) + "," + reactionText("wave", drop));
    PlimPlayer player(spec);
    EXPECT_EQ(player.frame().fx.size(), 2U);
    EXPECT_FALSE(player.frame().fx[0].v.contains("a")) << "as it is while nothing fades";
    player.play(PlimReaction::wave);
    EXPECT_EQ(player.frame().fx.size(), 1U) << "what is not there yet, and what is invisible, is left out";
    player.advance(0.125);  // w = 4 / 64
    const std::vector<FzFx> fading = player.frame().fx;
    ASSERT_EQ(fading.size(), 2U);
    EXPECT_EQ(fading[0].type, "spark");
    EXPECT_DOUBLE_EQ(fading[0].v.at("a"), 1 - 0.0625);
    EXPECT_EQ(fading[0].v.at("s"), 2);
    EXPECT_EQ(fading[1].type, "drop");
    EXPECT_DOUBLE_EQ(fading[1].v.at("a"), 0.5 * 0.0625);
    player.advance(0.375);
    EXPECT_EQ(player.frame().fx, (std::vector<FzFx>{{.type = "drop", .body = false, .color = {}, .v = {{"a", 0.5}}}}));
}

TEST(PlimPlayer, ATickIsNeverLongAndNeverGoesBack) {
    PlimPlayer player;
    struct Case {
        double clock;
        double speed;
        double moves;
    };
    double played = 0;
    for (const auto& [clock, speed, moves] : std::vector<Case>{
             {100, 1, 0},          {100.5, 1, 0.1},        {103.5, 2, 0.2},    {103.5625, 2, 0.125}, {90, 1, 0},
             {90.0625, 1, 0.0625}, {90.0625, 1, 0},        {90.03125, -1, 0},  {91, 0, 0},           {91.0625, -1, 0},
             {91.125, kNaN, 0},    {91.125, kInfinity, 0}, {92, kInfinity, 0}, {kNaN, 1, 0},         {93, 1, 0},
             {93.0625, 1, 0.0625}, {kInfinity, 1, 0.1},    {94, 1, 0},         {94.0625, 1, 0.0625},
         }) {
        EXPECT_DOUBLE_EQ(player.tick(Date{clock}, speed), moves) << clock;
        played += moves;
        EXPECT_DOUBLE_EQ(player.time(), played) << clock;
    }
}

TEST(PlimPlayer, WhatIsNoTimeMovesNothing) {
    for (const double none : {0.0, -0.5, kNaN, kInfinity, -kInfinity}) {
        PlimPlayer player;
        player.play(PlimReaction::fail);
        player.advance(0.3);
        const PlimFrame shown = player.frame();
        EXPECT_EQ(player.advance(none), 0) << none;
        EXPECT_EQ(player.time(), 0.3) << none;
        EXPECT_EQ(player.frame(), shown) << none;
    }
    PlimPlayer player;
    for (int i = 0; i < 3; ++i) player.advance(std::numeric_limits<double>::max());
    for (const auto& [channel, value] : player.frame().pose) EXPECT_TRUE(std::isfinite(value)) << channel;
}

}  // namespace
}  // namespace tessary
