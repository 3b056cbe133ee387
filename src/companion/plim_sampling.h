#pragma once

#include <string_view>

#include "companion/plim_frame.h"
#include "companion/plim_spec.h"

namespace tessary {

/// The share of the way that is done when the share `u` of the time has passed: "lin", "in", "out", "back" (passes its
/// goal and settles) or "step"; any other name is the cubic in-out.
[[nodiscard]] double ease(std::string_view name, double u);

/// The value of a track; 0 of an empty one. At the very time of keys, the value of the last key of that time.
[[nodiscard]] double sample(const PlimSpec::Track& track, double time);

/// Where in the reaction the player's seconds `t` lie: brought back into the loop, or held at the end.
[[nodiscard]] double localTime(const PlimSpec::Reaction& reaction, double t);

/// The picture of a reaction `t` seconds after its start.
[[nodiscard]] PlimFrame plimFrame(const PlimSpec& spec, PlimReaction reaction, double t);

/// Of the program's own reactions.
[[nodiscard]] PlimFrame plimFrame(PlimReaction reaction, double t);

}  // namespace tessary
