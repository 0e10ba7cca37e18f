// Generations on the real background threads and main queue; what the thread sanitizer finds here is a fault.
#include "model/loop_host.h"
#include "testing/ready_model/ready_model.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr std::size_t count = 2000, snapshots = 20;

// What the interface has seen of one request.
struct Seen {
    std::size_t texts = 0;
    std::string outcome;
};

struct ManyGenerations : testing::Test, LoopHost {
    // Takes the events that have come, and holds each generation to its order.
    void read() {
        for (const auto& event : eventsUntil([] { return true; })) {
            std::size_t id = 0;
            std::string kind, value;
            std::istringstream(event) >> id >> kind >> value;
            auto& seen = requests.at(id);
            ASSERT_EQ(seen.outcome, "") << "an event after the last one";
            if (kind == "text") {
                std::string text("text=");
                ASSERT_EQ(value, text.append(++seen.texts, 'x'));
            } else {
                seen.outcome = kind + ' ' + value;
                ++ended;
            }
        }
    }

    std::vector<Seen> requests = std::vector<Seen>(count);
    std::size_t ended = 0;
};

} // namespace

TEST_F(ManyGenerations, EachComesInOrderToOneEndThoughCancelledAtAnyMoment) {
    ready_model::answer(snapshots, "x");
    std::weak_ptr<SystemModelBridge> alive = bridge;
    for (std::size_t id = 0; id < count; ++id)
        respond(std::to_string(id));
    for (std::size_t turn = 0; ended < count; ++turn) {
        for (std::size_t id = turn; id < count; id += 97)
            cancel(std::to_string(id));
        g_main_context_iteration(nullptr, TRUE);
        ASSERT_NO_FATAL_FAILURE(read());
    }
    for (const auto& seen : requests) {
        if (seen.outcome == "done finish_reason=stop")
            EXPECT_EQ(seen.texts, snapshots);
        else
            EXPECT_EQ(seen.outcome, "error error=cancelled");
    }
    bridge.reset();
    while (!alive.expired())
        g_main_context_iteration(nullptr, TRUE);
}
