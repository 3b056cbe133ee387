#include <benchmark/benchmark.h>

#include "made_up_library.h"
#include "platform/adapters/threads/thread_queue.h"
#include "study/review_queue.h"
#include "study/scheduler.h"

namespace tessary {
namespace {

/// Drops what it is given: what is left is the main thread's own work.
class DroppingQueue final : public SerialQueue {
public:
    void post(std::move_only_function<void()> task) override { const auto dropped = std::move(task); }
    void drain() override {}
};

void rateAll(benchmark::State& state, SerialQueue& queue) {
    OpenLibrary library(1, static_cast<std::size_t>(state.range()), queue, StoreAccess::readWrite);
    const RecordList<Flashcard>& list = library.cards.cards();
    std::size_t next = 0;
    Date now = kBenchNow;
    for (auto _ : state) {
        if (!library.cards.rate(list[next].id, Rating::good, now)) state.SkipWithError("no such card");
        next = (next + 7919) % list.size();
        now = now + 1;
    }
    state.SetItemsProcessed(state.iterations());
    queue.drain();
}

/// A rating on the main thread: schedule, log, replace, schedule the save.
void rate(benchmark::State& state) {
    DroppingQueue queue;
    rateAll(state, queue);
}
BENCHMARK(rate)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

/// The same while the queue's thread appends to the log; a bounded number, as each append waits for the disk.
void rateWithLog(benchmark::State& state) {
    ThreadQueue queue("bench");
    rateAll(state, queue);
}
BENCHMARK(rateWithLog)->Arg(100'000)->Unit(benchmark::kMicrosecond)->Iterations(500);

/// What stands for review in the whole library of 10,000 pages.
void reviewQueue(benchmark::State& state) {
    DroppingQueue queue;
    OpenLibrary library(10'000, static_cast<std::size_t>(state.range()), queue, StoreAccess::readOnly);
    const StoreServices services = library.services.all();
    for (auto _ : state) {
        const ReviewQueue built =
            buildReviewQueue(library.cards, library.pages, services.settings, services.calendar, {}, kBenchNow);
        if (built.main.empty()) state.SkipWithError("nothing is due");
    }
}
BENCHMARK(reviewQueue)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// What a save costs the main thread: a snapshot handed to the queue, and dropped there.
void snapshot(benchmark::State& state) {
    const FlashcardFile file = madeUpCards(static_cast<std::size_t>(state.range()));
    for (auto _ : state) {
        const FlashcardFile copy{.version = 1, .cards = file.cards, .introduced = file.introduced};
        benchmark::DoNotOptimize(copy.cards.data());
    }
}
BENCHMARK(snapshot)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

void scheduleRatings(benchmark::State& state) {
    const FlashcardFile file = madeUpCards(1'000);
    std::size_t next = 0;
    for (auto _ : state) {
        const auto rating = static_cast<Rating>(1 + next % 4);
        benchmark::DoNotOptimize(
            schedule(file.cards[next % 1'000]->memory, rating, kBenchNow, kDefaultRetention, next));
        ++next;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(scheduleRatings);

void preview(benchmark::State& state) {
    const FlashcardFile file = madeUpCards(1'000);
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(previewRatings(file.cards[next++ % 1'000]->memory, kBenchNow, kDefaultRetention));
    }
}
BENCHMARK(preview);

}  // namespace
}  // namespace tessary
