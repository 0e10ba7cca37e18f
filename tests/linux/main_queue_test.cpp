#include "linux/run_until.h"
#include "platform/main_queue.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace platform {
namespace {

using namespace std::chrono_literals;

TEST(MainQueue, KeepsTheOrderOfEachOfManyThreads) {
    constexpr int threads = 8;
    constexpr int entries = 20000;
    std::vector<std::vector<int>> seen(threads);
    int count = 0;
    std::vector<std::jthread> posters;
    for (std::size_t thread = 0; thread < threads; ++thread) {
        posters.emplace_back([&, thread] {
            for (int i = 0; i < entries; ++i) {
                MainQueue::async([&, thread, i] {
                    seen[thread].push_back(i);
                    ++count;
                });
            }
        });
    }
    runUntil([&] { return count == threads * entries; });
    for (const auto& numbers : seen)
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
}

TEST(MainQueue, EntriesAndTimersWaitWhileAnEntryRunsAMainLoopOfItsOwn) {
    std::string order;
    MainQueue::async([&] {
        MainQueue::async([&] { order += 'c'; });
        MainQueue::asyncAfter(1ms, [&] { order += 'd'; });
        order += 'a';
        for (const TimePoint end = now() + 20ms; now() < end;)
            g_main_context_iteration(nullptr, FALSE);
        order += 'b';
    });
    runUntil([&] { return order.size() == 4; });
    EXPECT_EQ(order, "abcd");
}

TEST(MainQueue, TimerSetByAnotherThreadWakesASleepingLoop) {
    bool fired = false;
    g_main_context_iteration(nullptr, FALSE);
    const std::jthread other([&] { MainQueue::asyncAfter(2ms, [&] { fired = true; }); });
    const TimePoint start = now();
    while (!fired)
        g_main_context_iteration(nullptr, TRUE);
    EXPECT_LT(now() - start, 5s);
}

TEST(MainQueue, DrawingGetsTurnsDuringAFloodOfEntries) {
    bool flooding = true;
    std::function<void()> flood = [&] {
        if (flooding) MainQueue::async(flood);
    };
    for (int i = 0; i < 100; ++i)
        flood();
    int drawn = 0;
    constexpr int drawingPriority = G_PRIORITY_HIGH_IDLE + 20;
    g_idle_add_full(
        drawingPriority, [](gpointer count) -> gboolean { return ++*static_cast<int*>(count) < 20; }, &drawn,
        nullptr);
    runUntil([&] { return drawn == 20; });
    flooding = false;
    runUntil([&] { return g_main_context_pending(nullptr) == FALSE; });
}

} // namespace
} // namespace platform
