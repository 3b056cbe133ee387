#include "companion/plim_sampling.h"

#include <limits>

#include "companion_fixture.h"

namespace tessary {
namespace {

struct GoldenMotion {
    std::string reaction;
    std::vector<double> fingerprints;
};

const std::vector<GoldenMotion> kGoldenMotions = {
#include "companion/plim_motions_golden.inc"
};

TEST(PlimFrame, FollowsTheIndependentCalculation) {
    ASSERT_EQ(kGoldenMotions.size(), kReactions.size());
    for (const GoldenMotion& motion : kGoldenMotions) {
        const PlimReaction reaction = *plimReactionNamed(motion.reaction);
        ASSERT_EQ(motion.fingerprints.size(), 1000U);
        for (std::size_t i = 0; i < motion.fingerprints.size(); ++i) {
            const double t = static_cast<double>(13 * i) / 1024;
            ASSERT_NEAR(fingerprint(plimFrame(reaction, t)), motion.fingerprints[i], 2e-9)
                << "compare with plim_reference.py " << motion.reaction << ' ' << t;
        }
    }
}

TEST(PlimFrame, GivesAKeysValueAtItsTime) {
    std::size_t keys = 0;
    for (const PlimReaction reaction : kReactions) {
        const PlimSpec::Reaction& motion = plimSpec().reaction(reaction);
        for (const auto& [channel, track] : *motion.pose) {
            for (const PlimSpec::Key& key : track) {
                EXPECT_EQ(plimFrame(reaction, key.t).pose.at(channel), key.v)
                    << nameOf(reaction) << ' ' << channel << ' ' << key.t;
                ++keys;
            }
        }
        if (!motion.steps) continue;
        for (const auto& [part, steps] : *motion.steps) {
            for (const PlimSpec::StepKey& key : steps) EXPECT_EQ(plimFrame(reaction, key.t).steps.at(part), key.v);
        }
    }
    EXPECT_GT(keys, 400U);
}

TEST(PlimFrame, ShapesHoldUntilTheirNextKey) {
    const auto mouth = [](double t) { return plimFrame(PlimReaction::fail, t).steps.at("mouth"); };
    EXPECT_EQ(mouth(-1), "smile");
    EXPECT_EQ(mouth(0.0599), "smile");
    EXPECT_EQ(mouth(0.06), "oh");
    EXPECT_EQ(mouth(0.4999), "oh");
    EXPECT_EQ(mouth(0.5), "wobble");
    EXPECT_EQ(mouth(100), "wobble");
    const PlimSpec late = specOf(reactionText("idle", R"("steps":{"eye":[[1,"shut"]]})"));
    EXPECT_EQ(plimFrame(late, PlimReaction::idle, 0.9).steps.at("eye"), "open") << "at rest before the first key";
}

TEST(PlimFrame, EffectsTakeTheirPlaceAndTheirTracks) {
    const std::vector<FzFx> notebook = plimFrame(PlimReaction::study, 0.45).fx;
    ASSERT_EQ(notebook.size(), 1U);
    EXPECT_EQ(notebook[0],
              (FzFx{.type = "notebook",
                    .body = true,
                    .color = std::nullopt,
                    .v = {{"x", 128}, {"y", 166}, {"rot", -4}, {"sc", 0.86}, {"dy", -2}, {"a", 1}, {"flip", 0}}}));
    const PlimSpec moving = specOf(reactionText(
        "idle", R"("fx":[{"type":"spark","space":"canvas","c":"#FFD84D","v":{"x":1,"y":2},"tracks":{"x":[[0,7]]}}])"));
    EXPECT_EQ(plimFrame(moving, PlimReaction::idle, 0).fx.at(0),
              (FzFx{.type = "spark", .body = false, .color = "#FFD84D", .v = {{"x", 7}, {"y", 2}}}));
}

TEST(Ease, EveryKind) {
    struct Case {
        std::string name;
        double u;
        double expected;
    };
    const std::vector<Case> cases{
        {"lin", 0.25, 0.25},  {"in", 0.5, 0.125},       {"out", 0.5, 0.875},       {"out", 0.9, 0.999},
        {"back", 0, 0},       {"back", 0.5, 1.0876975}, {"back", 0.7, 1.08019954}, {"step", 0, 0},
        {"step", 0.9999, 0},  {"step", 1, 1},           {"io", 0.25, 0.0625},      {"io", 0.5, 0.5},
        {"io", 0.75, 0.9375}, {"", 0.25, 0.0625},       {"LIN", 0.25, 0.0625},     {"bounce", 0.75, 0.9375},
    };
    for (const Case& each : cases) EXPECT_NEAR(ease(each.name, each.u), each.expected, 1e-12) << each.name << each.u;
    for (const std::string name : {"lin", "in", "out", "back", "step", "io"}) {
        EXPECT_NEAR(ease(name, 0), 0, 1e-12) << name;
        EXPECT_EQ(ease(name, 1), 1) << name;
    }
}

TEST(Sample, EdgesOfATrack) {
    const PlimSpec::Track track{{1, 10, "io"}, {2, 20, "lin"}, {2, 50, "lin"}, {3, 60, "step"}, {4, 0, "lin"}};
    const PlimSpec::Track twins{{1, 1, "io"}, {1, 2, "back"}};
    struct Case {
        const PlimSpec::Track& track;
        double time;
        double expected;
    };
    const PlimSpec::Track none;
    const PlimSpec::Track one{{1, 5, "io"}};
    for (const auto& [keys, time, expected] : std::vector<Case>{
             {none, 1, 0},
             {one, 0, 5},
             {one, 1, 5},
             {one, 2, 5},
             {track, -9, 10},
             {track, 1, 10},
             {track, 1.5, 15},
             {track, 1.9, 19},
             {track, 2, 50},
             {track, 2.999, 50},
             {track, 3, 60},
             {track, 3.75, 15},
             {track, 4, 0},
             {track, 99, 0},
             {twins, 0.9, 1},
             {twins, 1, 2},
             {twins, 1.1, 2},
         }) {
        EXPECT_DOUBLE_EQ(sample(keys, time), expected) << time;
    }
    EXPECT_TRUE(std::isfinite(sample(track, std::numeric_limits<double>::quiet_NaN())));
}

TEST(LocalTime, LoopsHoldsOrEnds) {
    const PlimSpec& spec = plimSpec();
    struct Case {
        PlimReaction reaction;
        double t;
        double expected;
    };
    for (const auto& [reaction, t, expected] : std::vector<Case>{
             {PlimReaction::idle, 3.5, 3.5},
             {PlimReaction::idle, 4, 4},
             {PlimReaction::idle, 5, 1},
             {PlimReaction::idle, 403, 3},
             {PlimReaction::cur, 3.4, 3.4},
             {PlimReaction::cur, 4.5, 2.3},
             {PlimReaction::sleep, 6.1, 1.7},
             {PlimReaction::wave, 2.4, 2.4},
             {PlimReaction::wave, 2.5, 2.4},
             {PlimReaction::win, 1, 1},
             {PlimReaction::win, 1e9, 2},
             {PlimReaction::idle, -1, -1},
         }) {
        EXPECT_NEAR(localTime(spec.reaction(reaction), t), expected, 1e-9) << nameOf(reaction) << ' ' << t;
    }
    // What is no loop ends after its two seconds.
    for (const std::string loop : {"null", "[]", "[1]", "[1,1]", "[2,1]", "[0,1,2]"}) {
        const PlimSpec odd = specOf(reactionText("idle", "\"loop\":" + loop));
        EXPECT_EQ(localTime(odd.reaction(PlimReaction::idle), 9), 2) << loop;
    }
}

}  // namespace
}  // namespace tessary
