#include "companion/plim_sampling.h"

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

double cubed(double x) { return x * x * x; }

FzFx sampledEffect(const PlimSpec::Fx& effect, double time) {
    FzFx sampled{.type = effect.type, .body = effect.space == "body", .color = effect.c, .v = {}};
    if (effect.v) sampled.v = *effect.v;
    if (!effect.tracks) return sampled;
    for (const auto& [name, track] : *effect.tracks) sampled.v[name] = sample(track, time);
    return sampled;
}

}  // namespace

double ease(std::string_view name, double u) {
    constexpr double kOvershoot = 1.70158;  // passes the goal by a tenth of the way
    if (name == "lin") return u;
    if (name == "in") return cubed(u);
    if (name == "out") return 1 - cubed(1 - u);
    if (name == "back") return 1 + (kOvershoot + 1) * cubed(u - 1) + kOvershoot * (u - 1) * (u - 1);
    if (name == "step") return u < 1 ? 0 : 1;
    return u < 0.5 ? 4 * cubed(u) : 1 - cubed(2 - 2 * u) / 2;
}

double sample(const PlimSpec::Track& track, double time) {
    const auto next = std::ranges::find_if(track, [time](const PlimSpec::Key& key) { return key.t > time; });
    if (next == track.begin()) return track.empty() ? 0 : next->v;
    const PlimSpec::Key& last = *(next - 1);
    // Not left to the formula, which would round.
    if (next == track.end() || last.t == time) return last.v;
    return last.v + (next->v - last.v) * ease(next->ease, (time - last.t) / (next->t - last.t));
}

double localTime(const PlimSpec::Reaction& reaction, double t) {
    const std::optional<PlimSpec::LoopRange> loop = reaction.loopRange();
    if (!loop) return std::min(t, reaction.dur);
    return t > loop->to ? loop->from + std::fmod(t - loop->from, loop->to - loop->from) : t;
}

PlimFrame plimFrame(const PlimSpec& spec, PlimReaction reaction, double t) {
    const PlimSpec::Reaction& motion = spec.reaction(reaction);
    const double time = localTime(motion, t);
    PlimFrame frame{.pose = spec.base, .steps = spec.baseSteps, .fx = {}};
    if (motion.pose) {
        for (const auto& [channel, track] : *motion.pose) frame.pose[channel] = sample(track, time);
    }
    if (motion.steps) {
        for (const auto& [part, keys] : *motion.steps) {
            for (const PlimSpec::StepKey& key : keys) {
                if (key.t <= time) frame.steps[part] = key.v;
            }
        }
    }
    if (motion.fx) {
        frame.fx.reserve(motion.fx->size());
        for (const PlimSpec::Fx& effect : *motion.fx) frame.fx.push_back(sampledEffect(effect, time));
    }
    return frame;
}

PlimFrame plimFrame(PlimReaction reaction, double t) { return plimFrame(plimSpec(), reaction, t); }

}  // namespace tessary
