#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "companion/plim_frame.h"
#include "companion/plim_reaction_names.h"
#include "companion/plim_spec.h"

namespace tessary {

inline constexpr double kBlend = 0.28;  // seconds

inline constexpr std::array kReactions{PlimReaction::idle,  PlimReaction::wave,  PlimReaction::cur,
                                       PlimReaction::think, PlimReaction::study, PlimReaction::win,
                                       PlimReaction::fail,  PlimReaction::sleep};

inline std::string nameOf(PlimReaction reaction) { return std::string(rawValue(reaction)); }

/// A document of the test's own. Reactions are given as the members of "reactions".
inline PlimSpec specOf(const std::string& reactions, const std::string& base = R"({"rot":0,"dx":0})") {
    const auto spec = decodePlimSpec(R"({"blend":0.5,"base":)" + base + R"(,"baseSteps":{"eye":"open"},"reactions":{)" +
                                     reactions + "}}");
    EXPECT_TRUE(spec) << spec.error().describe("document");
    return spec.value_or(PlimSpec{});
}

/// `name` with these members beside the ones that every reaction needs.
inline std::string reactionText(const std::string& name, const std::string& members) {
    return "\"" + name + R"(":{"label":"","desc":"","dur":2,"still":0)" + (members.empty() ? "" : ",") + members + "}";
}

/// The degrees between two directions, at most 180.
inline double turn(double a, double b) { return std::fabs(std::remainder(a - b, 360)); }

inline void expectSamePose(const PlimFrame& actual, const PlimFrame& expected, const std::string& what) {
    ASSERT_EQ(actual.pose.size(), expected.pose.size()) << what;
    for (const auto& [channel, value] : expected.pose) {
        ASSERT_TRUE(actual.pose.contains(channel)) << what << ' ' << channel;
        const double found = actual.pose.at(channel);
        EXPECT_LT(channel == "rot" ? turn(found, value) : std::fabs(found - value), 1e-9) << what << ' ' << channel;
    }
}

/// What plim_reference.py calls the weight of a name.
inline double weight(const std::string& name) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    return 1 + static_cast<double>(hash >> 40) / 16777216;
}

/// One number for a whole picture, as plim_reference.py makes it.
inline double fingerprint(const PlimFrame& frame) {
    double total = 0;
    for (const auto& [channel, value] : frame.pose) total += weight("pose " + channel) * value;
    for (const auto& [part, shape] : frame.steps) total += weight(part + " " + shape);
    for (std::size_t i = 0; i < frame.fx.size(); ++i) {
        const FzFx& effect = frame.fx[i];
        const std::string place = std::to_string(i) + " ";
        total += weight(place + effect.type + (effect.body ? " body " : " canvas ") + effect.color.value_or(""));
        for (const auto& [name, value] : effect.v) total += weight(place + name) * value;
    }
    return total;
}

}  // namespace tessary
