#include <benchmark/benchmark.h>

#include "library/journal_store.h"
#include "made_up_library.h"
#include "ondemand_loop.h"
#include "platform/adapters/threads/thread_queue.h"

namespace tessary {
namespace {

constexpr auto kUnit = benchmark::kMillisecond;

void countBytes(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

/// Times `load` without what it takes to let go of the result.
template <class Load>
void timeLoad(benchmark::State& state, const std::string& text, Load load) {
    for (auto _ : state) {
        auto root = load(text);
        benchmark::DoNotOptimize(root);
        state.PauseTiming();
        {
            const auto dropped = std::move(root);
        }
        state.ResumeTiming();
    }
    countBytes(state, text);
}

template <class Root>
Root decoded(const std::string& text) {
    return decodeJson<Root>(text, benchContext()).value();
}

void loadCards(benchmark::State& state) {
    timeLoad(state, cardsText(static_cast<std::size_t>(state.range())), decoded<FlashcardFile>);
}
void loadCardsByHand(benchmark::State& state) {
    timeLoad(state, cardsText(static_cast<std::size_t>(state.range())), sharedCardsByHand);
}
void loadCardsByHandIntoValues(benchmark::State& state) {
    timeLoad(state, cardsText(static_cast<std::size_t>(state.range())), cardsByHand);
}
BENCHMARK(loadCards)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(kUnit);
BENCHMARK(loadCardsByHand)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(kUnit);
BENCHMARK(loadCardsByHandIntoValues)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(kUnit);

void loadPages(benchmark::State& state) {
    timeLoad(state, pagesText(static_cast<std::size_t>(state.range())), decoded<RecordList<JournalEntry>::Snapshot>);
}
void loadPagesByHand(benchmark::State& state) {
    timeLoad(state, pagesText(static_cast<std::size_t>(state.range())), pagesByHand);
}
BENCHMARK(loadPages)->Arg(1'000)->Arg(10'000)->Unit(kUnit);
BENCHMARK(loadPagesByHand)->Arg(1'000)->Arg(10'000)->Unit(kUnit);

/// Both stores over their files and indices, as a second program starts: without backups.
void start(benchmark::State& state) {
    const BenchFolder folder;
    folder.put("entries.json", pagesText(10'000));
    folder.put("flashcards.json", cardsText(100'000));
    BenchServices services(folder.path());
    const LibraryFolders folders{folder.path()};
    for (auto _ : state) {
        ThreadQueue queue("bench");
        ReviewLog log(folders.reviews(), services.all(), queue);
        const JournalStore library(folders, services.all(), queue, StoreAccess::readOnly);
        const FlashcardStore cards(folders.flashcards(), services.all(), queue, log, StoreAccess::readOnly);
        if (cards.cards().size() != 100'000) state.SkipWithError("the cards are not loaded");
    }
}
BENCHMARK(start)->Unit(kUnit);

}  // namespace
}  // namespace tessary
