#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>

#include "made_up_library.h"
#include "platform/atomic_write.h"

namespace tessary {
namespace {

constexpr auto kUnit = benchmark::kMillisecond;

/// What a save cannot go below: the same bytes copied to a fresh buffer, written at once and synced.
void rawWrite(benchmark::State& state, const std::string& text) {
    const BenchFolder folder;
    PosixFileSystem files;
    for (auto _ : state) {
        const auto copy = std::make_unique_for_overwrite<char[]>(text.size());
        std::memcpy(copy.get(), text.data(), text.size());
        const auto file = files.create(folder.path() / "file.json");
        if (!file || !(*file)->write({copy.get(), text.size()}) || !(*file)->sync()) state.SkipWithError("no write");
        state.PauseTiming();
        if (!files.remove(folder.path() / "file.json")) state.SkipWithError("not removed");
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

/// A save as the stores do it: encode, write beside, sync, rename, sync the folder.
template <class Root>
void save(benchmark::State& state, const Root& root) {
    const BenchFolder folder;
    PosixFileSystem files;
    std::size_t size = 0;
    for (auto _ : state) {
        const auto text = encodeJson(root);
        if (!text || !writeAtomically(files, folder.path() / "file.json", *text)) state.SkipWithError("no write");
        size = text ? text->size() : 0;
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

template <class Root>
void encode(benchmark::State& state, const Root& root) {
    std::size_t size = 0;
    for (auto _ : state) {
        const auto text = encodeJson(root);
        benchmark::DoNotOptimize(text);
        size = text ? text->size() : 0;
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

std::size_t countOf(const benchmark::State& state) { return static_cast<std::size_t>(state.range()); }

void saveCards(benchmark::State& state) { save(state, madeUpCards(countOf(state))); }
void saveCardsRaw(benchmark::State& state) { rawWrite(state, cardsText(countOf(state))); }
void encodeCards(benchmark::State& state) { encode(state, madeUpCards(countOf(state))); }
void savePages(benchmark::State& state) { save(state, madeUpPages(countOf(state))); }
void savePagesRaw(benchmark::State& state) { rawWrite(state, pagesText(countOf(state))); }
void encodePages(benchmark::State& state) { encode(state, madeUpPages(countOf(state))); }

// A sync waits for the disk: the time on the wall is the one to compare.
BENCHMARK(saveCards)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(kUnit)->UseRealTime();
BENCHMARK(saveCardsRaw)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(kUnit)->UseRealTime();
BENCHMARK(encodeCards)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(kUnit);
BENCHMARK(savePages)->Arg(1'000)->Arg(10'000)->Unit(kUnit)->UseRealTime();
BENCHMARK(savePagesRaw)->Arg(1'000)->Arg(10'000)->Unit(kUnit)->UseRealTime();
BENCHMARK(encodePages)->Arg(1'000)->Arg(10'000)->Unit(kUnit);

}  // namespace
}  // namespace tessary
