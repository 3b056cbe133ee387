#include "companion/plim_controller.h"

#include <algorithm>

namespace tessary {

namespace {
constexpr double kLongestHold = 8;  // seconds
}

double holdTime(const PlimSpec::Reaction& reaction) {
    const std::optional<PlimSpec::LoopRange> loop = reaction.loopRange();
    return loop ? std::min(loop->to + 2 * (loop->to - loop->from), kLongestHold) : kLongestHold;
}

PlimController::PlimController(const PlimSpec& spec) : player_(spec), frame_(player_.frame()) {}

void PlimController::play(PlimReaction reaction) {
    player_.play(reaction);
    awake_ = 0;
    frozen_ = false;
    publish();
}

void PlimController::tick(Date now, PlimTick force) {
    if (frozen_ && force == PlimTick::unlessFrozen) return;
    const double moved = player_.tick(now, speed_);
    if (moved == 0) return;
    const PlimSpec::Reaction& reaction = player_.spec().reaction(player_.current());
    if (reaction.loopRange() && player_.bt() >= player_.spec().blend) {
        awake_ += moved;
        frozen_ = awake_ >= holdTime(reaction);
    }
    publish();
}

void PlimController::publish() {
    frame_ = player_.frame();
    changed_.emit();
}

}  // namespace tessary
