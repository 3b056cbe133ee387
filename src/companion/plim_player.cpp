#include "companion/plim_player.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "companion/plim_sampling.h"

namespace tessary {
namespace {

constexpr double kLongestTick = 0.1;  // seconds

/// Fades that begin during fades would pile up effects without end. No reaction has more than four.
constexpr std::size_t kMostFadingOut = 16;

constexpr const char* kOpacity = "a";

/// Into [-180, 180), so that a whole turn is not turned back.
double wrappedDegrees(double degrees) { return std::fmod(std::fmod(degrees + 180, 360) + 360, 360) - 180; }

/// An effect without an opacity of its own is opaque.
double opacity(const FzFx& effect) {
    const auto found = effect.v.find(kOpacity);
    return found == effect.v.end() ? 1 : found->second;
}

/// Effects that have become invisible are left out.
void appendFaded(std::vector<FzFx>& drawn, std::vector<FzFx> effects, double share) {
    for (FzFx& effect : effects) {
        const double faded = opacity(effect) * share;
        if (faded == 0) continue;
        effect.v[kOpacity] = faded;
        drawn.push_back(std::move(effect));
    }
}

void dropFaintest(std::vector<FzFx>& effects) {
    while (effects.size() > kMostFadingOut) effects.erase(std::ranges::min_element(effects, {}, opacity));
}

}  // namespace

void PlimPlayer::play(PlimReaction reaction) {
    if (reaction == current_ && spec_.reaction(current_).loopRange()) return;
    PlimFrame present = frame();
    double& rotation = present.pose["rot"];
    rotation = wrappedDegrees(rotation);
    dropFaintest(present.fx);
    snap_ = std::move(present);
    current_ = reaction;
    t_ = 0;
    bt_ = 0;
}

double PlimPlayer::advance(double dt) {
    if (!std::isfinite(dt) || dt < 0) dt = 0;
    time_ += dt;
    t_ += dt;
    bt_ += dt;
    if (bt_ >= spec_.blend) snap_.reset();
    const PlimSpec::Reaction& reaction = spec_.reaction(current_);
    if (!reaction.loopRange() && t_ >= reaction.dur) play(base_);
    return dt;
}

double PlimPlayer::tick(Date now, double speed) {
    const double sinceLast = lastDate_ ? std::clamp(now - *lastDate_, 0.0, kLongestTick) : 0;
    lastDate_ = now;
    return advance(speed * sinceLast);
}

PlimFrame PlimPlayer::frame() const {
    PlimFrame next = plimFrame(spec_, current_, t_);
    if (!snap_ || bt_ >= spec_.blend) return next;
    const double w = ease("io", bt_ / spec_.blend);
    for (auto& [channel, value] : next.pose) {
        const auto old = snap_->pose.find(channel);
        if (old != snap_->pose.end()) value = old->second + (value - old->second) * w;
    }
    if (w < 0.5) next.steps = snap_->steps;
    std::vector<FzFx> effects;
    effects.reserve(snap_->fx.size() + next.fx.size());
    appendFaded(effects, snap_->fx, 1 - w);
    appendFaded(effects, std::move(next.fx), w);
    next.fx = std::move(effects);
    return next;
}

}  // namespace tessary
