#include "conformance/stage.h"

#include <gmock/gmock.h>

#include <limits>

namespace conformance {
namespace {

using namespace platform;
using namespace std::chrono_literals;
using testing::ElementsAre;

struct MainQueueTest : testing::Test {
    Stage stage;
    std::vector<std::string> ran;

    auto noting(const char* name) {
        return [this, name] { ran.emplace_back(name); };
    }
};

TEST_F(MainQueueTest, RunsWorkInOrderAndNotBeforeItsTurn) {
    MainQueue::async([&] {
        MainQueue::async(noting("third"));
        ran.emplace_back("first");
    });
    MainQueue::async(noting("second"));
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(stage.runUntil([&] { return ran.size() == 3; }));
    EXPECT_THAT(ran, ElementsAre("first", "second", "third"));
}

TEST_F(MainQueueTest, RunsDelayedWorkInTheOrderOfItsTimesAndNeverEarly) {
    const TimePoint start = now();
    TimePoint ranAt;
    const Seconds never(std::numeric_limits<double>::infinity()),
        none(std::numeric_limits<double>::quiet_NaN());
    MainQueue::asyncAfter(never, noting("never"));
    MainQueue::asyncAfter(none, [] {}); // whenever it likes
    MainQueue::asyncAfter(60ms, noting("late"));
    MainQueue::asyncAfter(20ms, [&] {
        ran.emplace_back("early");
        ranAt = now();
    });
    MainQueue::async(noting("at once"));
    MainQueue::asyncAfter(-5s, noting("overdue"));
    EXPECT_TRUE(stage.runUntil([&] { return ran.size() == 4; }));
    EXPECT_THAT(ran, ElementsAre("at once", "overdue", "early", "late"));
    EXPECT_GE(ranAt - start, 20ms);
}

TEST_F(MainQueueTest, LetsQueuedWorkWaitWhileTheMainThreadPauses) {
    MainQueue::async(noting("at once"));
    MainQueue::asyncAfter(1ms, noting("delayed"));
    const TimePoint start = now();
    platform::usleep(30'000);
    EXPECT_GE(now() - start, 30ms);
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(stage.runUntil([&] { return ran.size() == 2; }));
    EXPECT_THAT(ran, ElementsAre("at once", "delayed"));
}

} // namespace
} // namespace conformance
