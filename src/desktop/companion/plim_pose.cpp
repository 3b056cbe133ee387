#include "desktop/companion/plim_pose.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tessary {
namespace {

constexpr std::array kChannels{
    std::pair{"dx", &PlimPose::dx},     std::pair{"dy", &PlimPose::dy},       std::pair{"rot", &PlimPose::rot},
    std::pair{"sx", &PlimPose::sx},     std::pair{"sy", &PlimPose::sy},       std::pair{"ra", &PlimPose::ra},
    std::pair{"la", &PlimPose::la},     std::pair{"tail", &PlimPose::tail},   std::pair{"tailA", &PlimPose::tailA},
    std::pair{"glow", &PlimPose::glow}, std::pair{"lx", &PlimPose::lx},       std::pair{"ly", &PlimPose::ly},
    std::pair{"pr", &PlimPose::pr},     std::pair{"lid", &PlimPose::lid},     std::pair{"tilt", &PlimPose::tilt},
    std::pair{"wink", &PlimPose::wink}, std::pair{"browY", &PlimPose::browY}, std::pair{"mouthS", &PlimPose::mouthS},
};

constexpr std::array<std::string_view, 3> kEyes{"open", "happy", "closed"};
constexpr std::array<std::string_view, 4> kBrows{"none", "cur", "think", "sad"};
constexpr std::array<std::string_view, 6> kMouths{"smile", "grin", "o", "oh", "wobble", "tiny"};

template <class Shape, std::size_t count>
Shape shapeOf(const PlimFrame& frame, const char* step, const std::array<std::string_view, count>& names) {
    const auto found = frame.steps.find(step);
    if (found == frame.steps.end()) return Shape{};
    const auto name = std::ranges::find(names, found->second);
    return name == names.end() ? Shape{} : static_cast<Shape>(name - names.begin());
}

}  // namespace

PlimPose poseOf(const PlimFrame& frame) {
    PlimPose pose;
    for (const auto& [name, member] : kChannels) {
        if (const auto found = frame.pose.find(name); found != frame.pose.end()) pose.*member = found->second;
    }
    pose.eye = shapeOf<PlimEye>(frame, "eye", kEyes);
    pose.brow = shapeOf<PlimBrow>(frame, "brow", kBrows);
    pose.mouth = shapeOf<PlimMouth>(frame, "mouth", kMouths);
    return pose;
}

double valueOf(const FzFx& effect, const char* name, double otherwise) {
    const auto found = effect.v.find(name);
    return found == effect.v.end() ? otherwise : found->second;
}

}  // namespace tessary
