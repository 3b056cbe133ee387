#include <benchmark/benchmark.h>

#include <utility>

#include "library/page_search.h"
#include "made_up_library.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/threads/thread_queue.h"

namespace tessary {
namespace {

constexpr auto kUnit = benchmark::kMillisecond;

std::size_t countOf(const benchmark::State& state) { return static_cast<std::size_t>(state.range()); }

/// Both queries by turns: neither says more than the other, so that each looks through all pages.
void find(benchmark::State& state, std::string_view query, std::string_view other, std::size_t wanted) {
    ThreadQueue queue("bench");
    OpenLibrary library(countOf(state), 1, queue, StoreAccess::readOnly);
    const PageSearch::Pages& pages = library.pages.entries().snapshot();
    const IcuTextServices text;
    PageSearch search(text);
    if (search.find(pages, query).size() < wanted) state.SkipWithError("not found");
    for (auto _ : state) {
        benchmark::DoNotOptimize(search.find(pages, query));
        std::swap(query, other);
    }
}

/// Words that stand in every page, as soon as it is long enough.
void searchCommon(benchmark::State& state) { find(state, "gedachtnis membrane", "membrane transport", 100); }
/// A word of which there is none: every page is looked through to its end.
void searchNothing(benchmark::State& state) { find(state, "hippocampus", "cerebellum", 0); }
BENCHMARK(searchCommon)->Arg(1'000)->Arg(10'000)->Unit(kUnit);
BENCHMARK(searchNothing)->Arg(1'000)->Arg(10'000)->Unit(kUnit);

/// The first search of a run folds all texts.
void searchFirst(benchmark::State& state) {
    ThreadQueue queue("bench");
    OpenLibrary library(countOf(state), 1, queue, StoreAccess::readOnly);
    const PageSearch::Pages& pages = library.pages.entries().snapshot();
    const IcuTextServices text;
    for (auto _ : state) {
        PageSearch search(text);
        benchmark::DoNotOptimize(search.find(pages, "hippocampus"));
    }
}
BENCHMARK(searchFirst)->Arg(1'000)->Arg(10'000)->Unit(kUnit);

}  // namespace
}  // namespace tessary
