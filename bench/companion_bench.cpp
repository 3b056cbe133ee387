#include <benchmark/benchmark.h>

#include "companion/plim_document.h"
#include "companion/plim_player.h"
#include "companion/plim_sampling.h"

namespace tessary {
namespace {

/// Somewhere between the keys, over all of the reaction.
double nextMoment(double t, PlimReaction reaction) {
    constexpr double kStep = 0.1234;  // seconds
    return t > plimSpec().reaction(reaction).dur ? 0 : t + kStep;
}

void companionFrame(benchmark::State& state, PlimReaction reaction) {
    double t = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(plimFrame(reaction, t));
        t = nextMoment(t, reaction);
    }
}
BENCHMARK_CAPTURE(companionFrame, idle, PlimReaction::idle)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(companionFrame, cur, PlimReaction::cur)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(companionFrame, win, PlimReaction::win)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(companionFrame, fail, PlimReaction::fail)->Unit(benchmark::kMicrosecond);

/// The least that a picture could cost: a copy of a finished one.
void companionFrameCopy(benchmark::State& state) {
    const PlimFrame frame = plimFrame(PlimReaction::win, 1.5);
    for (auto _ : state) {
        PlimFrame copy = frame;
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(companionFrameCopy)->Unit(benchmark::kMicrosecond);

/// In the middle of a fade between the two reactions with the most effects.
void companionFade(benchmark::State& state) {
    PlimPlayer player;
    player.play(PlimReaction::win);
    player.advance(1.5);
    player.play(PlimReaction::cur);
    player.advance(plimSpec().blend / 2);
    for (auto _ : state) benchmark::DoNotOptimize(player.frame());
}
BENCHMARK(companionFade)->Unit(benchmark::kMicrosecond);

/// What the first use costs.
void companionDecode(benchmark::State& state) {
    for (auto _ : state) {
        if (!decodePlimSpec(kPlimDocument)) state.SkipWithError("not decoded");
    }
}
BENCHMARK(companionDecode)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tessary
