#include <benchmark/benchmark.h>

#include <QtGui/QPainter>
#include <array>

#include "companion/plim_reaction_names.h"
#include "companion/plim_sampling.h"
#include "desktop/companion/plim_painter.h"

namespace tessary {
namespace {

/// One picture of the companion, in turn from all moments of a reaction; `side` in pixels.
void drawCompanion(benchmark::State& state, PlimReaction reaction, int side) {
    std::array<PlimFrame, 24> frames;
    const double length = plimSpec().reaction(reaction).dur;
    for (std::size_t i = 0; i < frames.size(); ++i)
        frames[i] = plimFrame(reaction, length * static_cast<double>(i) / static_cast<double>(frames.size()));
    QImage canvas(side, side, QImage::Format_ARGB32_Premultiplied);
    const PlimLook look{.dark = true, .detail = detailFor(side)};
    std::size_t next = 0;
    for (auto _ : state) {
        drawPlim(canvas, frames[next++ % frames.size()], look);
        benchmark::DoNotOptimize(canvas.constBits());
    }
}
BENCHMARK_CAPTURE(drawCompanion, idle48, PlimReaction::idle, 48)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawCompanion, idle240, PlimReaction::idle, 240)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawCompanion, study240, PlimReaction::study, 240)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawCompanion, win240, PlimReaction::win, 240)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawCompanion, win480, PlimReaction::win, 480)->Unit(benchmark::kMillisecond);

/// The least that the same could cost: a picture of that size laid over another.
void copyPicture(benchmark::State& state) {
    const auto side = static_cast<int>(state.range(0));
    QImage canvas(side, side, QImage::Format_ARGB32_Premultiplied);
    QImage picture(canvas.size(), canvas.format());
    drawPlim(picture, plimFrame(PlimReaction::idle, 0), {.dark = true});
    for (auto _ : state) {
        canvas.fill(Qt::transparent);
        QPainter(&canvas).drawImage(0, 0, picture);
        benchmark::DoNotOptimize(canvas.constBits());
    }
}
BENCHMARK(copyPicture)->Arg(240)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tessary
