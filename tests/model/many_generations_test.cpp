// Generations on the real background threads and main queue; what the thread sanitizer finds here is a fault.
#include "model/loop_host.h"
#include "platform/linux/base/outgoing_messages.h"
#include "testing/ready_model/ready_model.h"

#include <glib.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <sstream>

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// What the interface has seen of one request.
struct Seen {
    std::size_t length = 0; // of its text
    std::string outcome;
};

struct ManyGenerations : testing::Test, LoopHost {
    static constexpr std::size_t count = 2000, pieces = 20;

    // Takes the events that have come, and holds each generation to its order.
    void read() {
        for (const auto& event : eventsUntil([] { return true; })) {
            std::size_t id = 0;
            std::string kind, value;
            std::istringstream(event) >> id >> kind >> value;
            auto& seen = requests.at(id);
            ASSERT_EQ(seen.outcome, "") << "an event after the last one";
            if (kind == "text") {
                ASSERT_GT(value.size(), seen.length) << "an older text after a newer one";
                seen.length = value.size();
            } else {
                seen.outcome = kind + ' ' + value;
                ++ended;
            }
        }
    }

    std::vector<Seen> requests = std::vector<Seen>(count);
    std::size_t ended = 0;
};

struct OneGeneration : testing::Test, LoopHost {
    OneGeneration() {
        respond("a");
        eventsUntil([] { return ready_model::waiting() == 1; });
    }
    ~OneGeneration() override { platform::setMessagesWaiting(false); }

    // The events of a time in which nothing should come, or no more than a few.
    std::vector<std::string> eventsFor(std::chrono::milliseconds time) {
        const auto end = std::chrono::steady_clock::now() + time;
        return eventsUntil([&] { return std::chrono::steady_clock::now() >= end; });
    }
};

} // namespace

TEST_F(ManyGenerations, EachComesInOrderToOneEndThoughCancelledAtAnyMoment) {
    std::weak_ptr<SystemModelBridge> alive = bridge;
    for (std::size_t id = 0; id < count; ++id) {
        respond(std::to_string(id));
        if (id % 97 == 0) cancel(std::to_string(id));
    }
    while (ready_model::waiting() < count)
        ASSERT_NO_FATAL_FAILURE(read());
    for (std::size_t turn = 1; ended < count; ++turn) {
        if (turn <= pieces) ready_model::tell("x");
        if (turn == pieces) ready_model::end();
        for (std::size_t id = turn; id < count; id += 97)
            cancel(std::to_string(id));
        g_main_context_iteration(nullptr, TRUE);
        ASSERT_NO_FATAL_FAILURE(read());
    }
    for (const auto& seen : requests) {
        if (seen.outcome == "done finish_reason=stop")
            EXPECT_EQ(seen.length, std::string("text=").size() + pieces);
        else
            EXPECT_EQ(seen.outcome, "error error=cancelled");
    }
    bridge.reset();
    while (!alive.expired())
        g_main_context_iteration(nullptr, TRUE);
}

TEST_F(OneGeneration, SendsTheNewestTextOnceTheInterfaceHasTakenTheOneBefore) {
    platform::setMessagesWaiting(true);
    ready_model::tell("1");
    EXPECT_THAT(eventsUntil([&] { return hasEvents(); }), ElementsAre("a text text=1"));
    for (const char* text : {"2", "3", "4"})
        ready_model::tell(text);
    ready_model::end();
    EXPECT_THAT(eventsFor(50ms), IsEmpty());
    platform::setMessagesWaiting(false);
    EXPECT_THAT(allEvents(), ElementsAre("a text text=1234", "a done finish_reason=stop"));
}

TEST_F(OneGeneration, NoticesACancellationThoughTheInterfaceTakesNothing) {
    platform::setMessagesWaiting(true);
    ready_model::tell("1");
    eventsUntil([&] { return hasEvents(); });
    ready_model::tell("2");
    eventsFor(10ms);
    cancel("a");
    EXPECT_THAT(allEvents(), ElementsAre("a error error=cancelled"));
    ready_model::end();
}

TEST_F(OneGeneration, SendsALongTextAFewTimesASecond) {
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::string> events;
    const auto take = [&](std::vector<std::string> more) {
        std::ranges::move(more, std::back_inserter(events));
    };
    for (int i = 0; i < 200; ++i) {
        ready_model::tell(std::string(1000, 'x'));
        take(eventsFor(1ms));
    }
    ready_model::end();
    take(allEvents());
    const auto frames = static_cast<std::size_t>((std::chrono::steady_clock::now() - start) / 16ms);
    EXPECT_LE(events.size(), frames + 20); // those while it is still short
    EXPECT_EQ(events.at(events.size() - 2).size(), std::string("a text text=").size() + 200'000);
}
