// Generations on the real background threads and main queue; what the thread sanitizer finds here is a fault.
#include "flutter/arguments.h"
#include "flutter/fake_messenger.h"
#include "model/system_model_bridge.h"
#include "support/ready_model.h"

#include <glib.h>
#include <gtest/gtest.h>

using flutter::EncodableMap;

namespace {

constexpr int count = 2000;
constexpr std::size_t snapshots = 20;

// What the interface has seen of one request.
struct Seen {
    std::size_t texts = 0;
    std::string outcome;
};

class ManyGenerations : public testing::Test {
protected:
    ManyGenerations() { messenger.deliver(events, flutter::encodeMethodCall({"listen", {}})); }

    void call(const char* method, int id) {
        messenger.deliver(
            "quillmark.quillmark/system_model",
            flutter::encodeMethodCall({method, EncodableMap{{"request_id", std::to_string(id)}}}));
    }

    // Takes the events that have come, and holds each generation to its order.
    void read() {
        for (const auto& sent : std::exchange(messenger.sent, {})) {
            const auto event =
                std::get<flutter::EncodableValue>(flutter::decodeEnvelope(sent.message).value());
            const auto text = [&](const char* key) {
                const auto* found = flutter::asString(flutter::member(flutter::asMap(event), key));
                return found ? *found : std::string();
            };
            auto& seen = requests.at(static_cast<std::size_t>(std::stoi(text("request_id"))));
            ASSERT_EQ(seen.outcome, "") << "an event after the last one";
            if (text("kind") == "text") {
                ASSERT_EQ(text("text").size(), ++seen.texts);
            } else {
                seen.outcome = text("kind");
                ++ended;
            }
        }
    }

    static constexpr auto events = "quillmark.quillmark/system_model/events";
    FakeMessenger messenger;
    std::shared_ptr<SystemModelBridge> bridge = SystemModelBridge::create(messenger);
    std::vector<Seen> requests = std::vector<Seen>(count);
    int ended = 0;
};

} // namespace

TEST_F(ManyGenerations, EachComesInOrderToOneEndThoughCancelledAtAnyMoment) {
    ready_model::answer(snapshots, "x");
    std::weak_ptr<SystemModelBridge> alive = bridge;
    for (int id = 0; id < count; ++id)
        call("respond", id);
    for (int turn = 0; ended < count; ++turn) {
        for (int id = turn; id < count; id += 97)
            call("cancel", id);
        g_main_context_iteration(nullptr, TRUE);
        ASSERT_NO_FATAL_FAILURE(read());
    }
    for (const auto& seen : requests) {
        if (seen.outcome == "done")
            EXPECT_EQ(seen.texts, snapshots);
        else
            EXPECT_EQ(seen.outcome, "error");
    }
    bridge.reset();
    while (!alive.expired())
        g_main_context_iteration(nullptr, TRUE);
}
