#include <gtest/gtest.h>

#include <pthread.h>

#include <algorithm>
#include <functional>
#include <latch>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/adapters/system/random_ids.h"
#include "platform/adapters/system/stream_console.h"
#include "platform/adapters/system/system_clock.h"
#include "platform/adapters/threads/event_loop.h"
#include "platform/adapters/threads/thread_queue.h"
#include "support/fakes.h"
#include "support/virtual_loop.h"

namespace tessary {
namespace {

using Numbers = std::vector<int>;

constexpr double kPatience = 20;

TEST(EventLoopTest, runsInOrder) {
    EventLoop loop;
    Numbers seen;
    for (int i = 0; i < 5; ++i) loop.post([&seen, i] { seen.push_back(i); });
    loop.runReady();
    EXPECT_EQ(seen, (Numbers{0, 1, 2, 3, 4}));
}

TEST(EventLoopTest, whatATaskPostsWaits) {
    EventLoop loop;
    Numbers seen;
    loop.post([&] {
        seen.push_back(1);
        loop.post([&] { seen.push_back(2); });
    });
    loop.runReady();
    EXPECT_EQ(seen, Numbers{1});
    loop.runReady();
    EXPECT_EQ(seen, (Numbers{1, 2}));
}

TEST(EventLoopTest, delayedTasksRunByTheirTime) {
    EventLoop loop;
    Numbers seen;
    DelayedTask never = loop.postAfter(100000, [&] { seen.push_back(3); });
    const DelayedTask late = loop.postAfter(0.03, [&] { seen.push_back(2); });
    const DelayedTask early = loop.postAfter(0.01, [&] { seen.push_back(1); });
    while (seen.size() < 2 && loop.waitUntilReady(kPatience)) loop.runReady();
    loop.runReady();
    EXPECT_EQ(seen, (Numbers{1, 2}));
    never.cancel();
    EXPECT_FALSE(loop.secondsToNextTask());
}

TEST(EventLoopTest, cancelledTasksDoNotRun) {
    EventLoop loop;
    bool ran = false;
    DelayedTask task = loop.postAfter(0, [&] { ran = true; });
    task.cancel();
    loop.runReady();
    EXPECT_FALSE(ran);
    EXPECT_FALSE(loop.secondsToNextTask());
}

TEST(EventLoopTest, lettingGoOfTheHandleCancels) {
    EventLoop loop;
    bool ran = false;
    {
        const DelayedTask task = loop.postAfter(0, [&] { ran = true; });
    }
    DelayedTask replaced = loop.postAfter(0, [&] { ran = true; });
    replaced = DelayedTask();
    loop.runReady();
    EXPECT_FALSE(ran);
}

TEST(EventLoopTest, handlesMayOutliveTheLoop) {
    auto loop = std::make_unique<EventLoop>();
    DelayedTask task = loop->postAfter(1000, [] {});
    loop.reset();
    task.cancel();
}

TEST(EventLoopTest, aTaskMayHoldTheHandleOfAnother) {
    EventLoop loop;
    bool ran = false;
    DelayedTask inner = loop.postAfter(0, [&] { ran = true; });
    DelayedTask outer = loop.postAfter(0, [held = std::move(inner)] {});
    outer.cancel();
    loop.runReady();
    EXPECT_FALSE(ran);
    static_cast<void>(loop.postAfter(0, [held = loop.postAfter(0, [] {})] {}));
    loop.post([held = loop.postAfter(0, [] {})] {});
}

TEST(EventLoopTest, aTaskMayCancelItselfAndTheNext) {
    EventLoop loop;
    Numbers seen;
    DelayedTask first;
    DelayedTask second;
    first = loop.postAfter(0, [&] {
        seen.push_back(1);
        first.cancel();
        second.cancel();
    });
    second = loop.postAfter(0, [&] { seen.push_back(2); });
    loop.runReady();
    EXPECT_EQ(seen, Numbers{1});
}

TEST(EventLoopTest, tellsWhenTheNextTaskIsDue) {
    EventLoop loop;
    EXPECT_FALSE(loop.secondsToNextTask());
    const DelayedTask task = loop.postAfter(100000, [] {});
    EXPECT_LE(loop.secondsToNextTask().value(), 100000);
    EXPECT_GT(loop.secondsToNextTask().value(), 0);
    loop.post([] {});
    EXPECT_EQ(loop.secondsToNextTask(), 0.0);
}

TEST(EventLoopTest, waitingEndsWithItsTime) {
    EventLoop loop;
    EXPECT_FALSE(loop.waitUntilReady(0));
    EXPECT_FALSE(loop.waitUntilReady(-1));
    EXPECT_FALSE(loop.waitUntilReady(0.01));
    const DelayedTask task = loop.postAfter(1000, [] {});
    EXPECT_FALSE(loop.waitUntilReady(0.01));
    loop.post([] {});
    EXPECT_TRUE(loop.waitUntilReady(0));
}

TEST(EventLoopTest, postingFromAnotherThreadWakesTheLoop) {
    // Often enough that some posts meet the loop asleep.
    for (int round = 0; round < 200; ++round) {
        EventLoop loop;
        std::thread::id ranOn;
        const std::jthread other([&] { loop.post([&] { ranOn = std::this_thread::get_id(); }); });
        ASSERT_TRUE(loop.waitUntilReady(kPatience));
        loop.runReady();
        ASSERT_EQ(ranOn, std::this_thread::get_id());
    }
}

TEST(EventLoopTest, manyThreadsPostInTheirOwnOrder) {
    constexpr int kThreads = 4;
    constexpr int kTasks = 500;
    EventLoop loop;
    std::vector<Numbers> seen(kThreads);
    std::vector<std::jthread> threads;
    for (Numbers& numbers : seen) {
        threads.emplace_back([&loop, &numbers] {
            for (int i = 0; i < kTasks; ++i) loop.post([&numbers, i] { numbers.push_back(i); });
        });
    }
    threads.clear();
    loop.runReady();
    for (const Numbers& numbers : seen) {
        ASSERT_EQ(numbers.size(), static_cast<std::size_t>(kTasks));
        EXPECT_TRUE(std::ranges::is_sorted(numbers));
    }
}

TEST(ThreadQueueTest, runsInOrderOffTheThread) {
    ThreadQueue queue("worker");
    Numbers seen;
    std::thread::id ranOn;
    for (int i = 0; i < 100; ++i) queue.post([&seen, i] { seen.push_back(i); });
    queue.post([&] { ranOn = std::this_thread::get_id(); });
    queue.drain();
    ASSERT_EQ(seen.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
    EXPECT_NE(ranOn, std::this_thread::get_id());
}

TEST(ThreadQueueTest, drainingAnIdleQueueReturns) {
    ThreadQueue queue("idle");
    queue.drain();
    queue.drain();
}

TEST(ThreadQueueTest, endRunsWhatIsLeft) {
    Numbers seen;
    std::latch ending(1);
    {
        ThreadQueue queue("last");
        queue.post([&queue, &seen, &ending] {
            ending.wait();
            queue.post([&seen] { seen.push_back(3); });
        });
        queue.post([&seen] { seen.push_back(1); });
        queue.post([&seen] { seen.push_back(2); });
        ending.count_down();
    }
    EXPECT_EQ(seen, (Numbers{1, 2, 3}));
}

TEST(ThreadQueueTest, drainWaitsForTheEndOfTheTaskItself) {
    ThreadQueue queue("closures");
    auto held = std::make_shared<int>(1);
    queue.post([copy = held] {});
    queue.drain();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(ThreadQueueTest, nameIsKeptWhole) {
    ThreadQueue queue("a-name-longer-than-a-thread-may-have");
    EXPECT_EQ(queue.name(), "a-name-longer-than-a-thread-may-have");
    std::string threadName;
    queue.post([&threadName] {
        char buffer[16] = {};
        pthread_getname_np(pthread_self(), buffer, sizeof buffer);
        threadName = buffer;
    });
    queue.drain();
    EXPECT_EQ(threadName, "a-name-longer-t");
}

TEST(VirtualLoopTest, runsWhatFallsDueInOrder) {
    VirtualLoop loop;
    std::vector<std::pair<int, double>> seen;
    const auto note = [&](int number) { seen.emplace_back(number, loop.time()); };
    const DelayedTask late = loop.postAfter(3, [&] { note(3); });
    const DelayedTask early = loop.postAfter(1, [&] {
        note(1);
        loop.post([&] { note(2); });
    });
    loop.post([&] { note(0); });
    loop.advance(2);
    EXPECT_EQ(seen, (std::vector<std::pair<int, double>>{{0, 0.0}, {1, 1.0}, {2, 1.0}}));
    EXPECT_EQ(loop.time(), 2);
    loop.advance(1);
    EXPECT_EQ(seen.back(), (std::pair{3, 3.0}));
}

TEST(VirtualLoopTest, repeatingTaskRunsOncePerPeriod) {
    VirtualLoop loop;
    int runs = 0;
    DelayedTask timer;
    std::function<void()> tick = [&] {
        ++runs;
        timer = loop.postAfter(10, [&] { tick(); });
    };
    timer = loop.postAfter(10, [&] { tick(); });
    loop.runReady();
    EXPECT_EQ(runs, 0);
    loop.advance(35);
    EXPECT_EQ(runs, 3);
    timer.cancel();
    loop.advance(100);
    EXPECT_EQ(runs, 3);
}

TEST(SystemTest, clockTellsThePresent) {
    const Date now = SystemClock().now();
    EXPECT_GT(now, parseIso8601("2024-01-01").value());
    EXPECT_LT(now, parseIso8601("2200-01-01").value());
}

TEST(SystemTest, randomIdsDiffer) {
    RandomIds ids;
    const Uuid first = ids.next();
    EXPECT_NE(first, ids.next());
    EXPECT_EQ(first.toString()[14], '4');
}

TEST(SystemTest, consoleKeepsLinesWhole) {
    std::ostringstream stream;
    StreamConsole console(stream);
    {
        std::jthread one([&] {
            for (int i = 0; i < 100; ++i) console.print("aaaa");
        });
        std::jthread two([&] {
            for (int i = 0; i < 100; ++i) console.print("bbbb");
        });
    }
    std::istringstream lines(stream.str());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) EXPECT_TRUE(line == "aaaa" || line == "bbbb") << line;
    EXPECT_EQ(count, 200);
}

TEST(FakesTest, behaveAsNamed) {
    SequentialIds ids;
    EXPECT_EQ(ids.next().toString(), "00000000-0000-4000-8000-000000000001");
    EXPECT_EQ(ids.next().toString(), "00000000-0000-4000-8000-000000000002");
    ManualClock clock(Date{5});
    clock.advance(2);
    EXPECT_EQ(clock.now(), Date{7});
    RecordingConsole console;
    console.print("line");
    EXPECT_EQ(console.lines(), std::vector<std::string>{"line"});
    InlineQueue queue;
    Numbers seen;
    queue.post([&] {
        queue.post([&] { seen.push_back(2); });
        seen.push_back(1);
    });
    EXPECT_EQ(seen, (Numbers{1, 2}));
}

}  // namespace
}  // namespace tessary
