// Generations: what a request comes to, however its model behaves and whenever it is cancelled.
#include "flutter/fake_messenger.h"
#include "model/model_host.h"
#include "support/describe.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>

using platform::CancellationError;
using platform::Mirror;
using simulated::OnCancel;
using simulated::Script;
using testing::ElementsAre;
using namespace std::chrono_literals;
using GenerationError = platform::LanguageModelSession::GenerationError;

namespace {

struct Generation : testing::Test, ModelHost {
    Generation() { listen(); }
};

Script dearAnna() { return Script{}.says(10ms, "Dear").says(10ms, "Dear Anna").ends(10ms); }

} // namespace

TEST_F(Generation, EndsWithOneEventThatSaysHowItWent) {
    const struct {
        Script script;
        std::vector<std::string> events;
    } table[]{
        {Script{}, {"a done finish_reason=stop"}},
        {Script{}.says(1ms, "").says(1ms, "x").says(1ms, "x").ends(1ms),
         {"a text text=", "a text text=x", "a text text=x", "a done finish_reason=stop"}},
        {Script{}.counts(9), {"a done finish_reason=stop"}},
        {Script{}.counts(10), {"a done finish_reason=length"}},
        {Script{}.reflects({{{"content", "x"}, {"responseTokenCount", "+10"}}}),
         {"a done finish_reason=length"}},
        {Script{}.reflects({{{"tokens", std::int64_t{10}}}}), {"a done finish_reason=stop"}},
        {Script{}.counts(10).failsToCollect(GenerationError("refusal")), {"a done finish_reason=stop"}},
        {Script{}.says(1ms, "x").collects(1ms).failsToCollect(CancellationError()),
         {"a text text=x", "a done finish_reason=stop"}},
        {Script{}.says(1ms, "x").fails(1ms, CancellationError()),
         {"a text text=x", "a error error=cancelled"}},
        {Script{}.says(1ms, "x").fails(1ms, GenerationError("Start the server.")),
         {"a text text=x", "a error error=Start the server."}},
        {Script{}.fails(0s, GenerationError("a guardrailViolation here")),
         {"a refused reason=a guardrailViolation here"}},
        {Script{}.fails(0s, GenerationError("refusal")), {"a refused reason=refusal"}},
        {Script{}.fails(0s, GenerationError("GuardrailViolation, Refusal")),
         {"a error error=GuardrailViolation, Refusal"}},
        {Script{}.fails(0s, std::runtime_error("guardrailViolation")), {"a error error=guardrailViolation"}},
    };
    for (const auto& row : table) {
        model(row.script);
        call("respond", flutter::EncodableMap{{"request_id", "a"}, {"max_tokens", 10}});
        EXPECT_EQ(allEvents(), row.events);
    }
}

TEST_F(Generation, NoticesACancellationWithTheNextSnapshotOrAsItsModelDoes) {
    const std::string cancelled = "a error error=cancelled", done = "a done finish_reason=stop";
    const std::string dear = "a text text=Dear", anna = "a text text=Dear Anna";
    const struct {
        std::chrono::milliseconds at;
        OnCancel reaction;
        std::vector<std::string> events;
        std::chrono::milliseconds ended;
    } table[]{
        {0ms, OnCancel::ignore, {cancelled}, 10ms},
        {15ms, OnCancel::ignore, {dear, cancelled}, 20ms},
        {25ms, OnCancel::ignore, {dear, anna, done}, 35ms}, // between the last snapshot and the end
        {15ms, OnCancel::fail, {dear, cancelled}, 15ms},
        {15ms, OnCancel::end, {dear, done}, 20ms},
        {25ms, OnCancel::fail, {dear, anna, cancelled}, 25ms},
        {32ms, OnCancel::fail, {dear, anna, done}, 35ms}, // the stream has ended, its response is to come
        {50ms, OnCancel::fail, {dear, anna, done}, 35ms}, // all over
    };
    for (const auto& row : table) {
        const auto start = world.time();
        std::chrono::microseconds ended{};
        world.interface().onMessage = [&](const auto&) { ended = world.time() - start; };
        model(dearAnna().cancelled(row.reaction).collects(5ms));
        respond("a");
        world.runFor(row.at);
        EXPECT_EQ(cancel("a"), "null");
        EXPECT_EQ(cancel("a"), "null");
        EXPECT_EQ(allEvents(), row.events) << row.at.count();
        EXPECT_EQ(ended, row.ended) << row.at.count();
    }
}

TEST_F(Generation, SharesItsIdentifierWithALaterOneThatCancelReaches) {
    model(dearAnna());
    model(Script{}.says(15ms, "Second").says(1s, "never").ends(1s));
    respond("a");
    respond("a");
    world.runFor(16ms);
    cancel("a");
    EXPECT_THAT(allEvents(), ElementsAre("a text text=Dear", "a text text=Second", "a text text=Dear Anna",
                                         "a done finish_reason=stop", "a error error=cancelled"));
}

TEST_F(Generation, TakesAwayTheTableEntryOfALaterOneWhenItEndsFirst) {
    model(dearAnna());
    model(Script{}.says(1s, "Second").ends(1s));
    respond("a");
    respond("a");
    world.runFor(500ms);
    cancel("a"); // reaches nobody any more
    events();
    EXPECT_THAT(allEvents(), ElementsAre("a text text=Second", "a done finish_reason=stop"));
}

// Calls that the host handles before its background work gets a turn.
TEST_F(Generation, HearsOfWhatHappenedBeforeItStarted) {
    FakeMessenger interface;
    bridge = SystemModelBridge::create(interface);
    const auto call = [&](const char* channel, const char* method) {
        const flutter::EncodableMap id{{"request_id", "a"}};
        interface.deliver(channel, flutter::encodeMethodCall({method, id}));
    };
    call("quillmark.quillmark/system_model/events", "listen");
    model(dearAnna());
    call("quillmark.quillmark/system_model", "respond");
    call("quillmark.quillmark/system_model", "cancel");
    world.run();
    ASSERT_EQ(interface.sent.size(), 1u);
    EXPECT_EQ(describeEvent(interface.sent[0].message), "a error error=cancelled");

    call("quillmark.quillmark/system_model", "respond");
    bridge.reset();
    world.run();
    EXPECT_EQ(interface.sent.size(), 1u);
    EXPECT_EQ(world.languageModel.asked.size(), 1u);
}

TEST_F(Generation, KeepsTheBridgeUntilItsLastEventIsDelivered) {
    const std::weak_ptr alive{bridge};
    model(dearAnna());
    respond("a");
    world.runFor(5ms);
    bridge.reset();
    EXPECT_THAT(allEvents(),
                ElementsAre("a text text=Dear", "a text text=Dear Anna", "a done finish_reason=stop"));
    EXPECT_TRUE(alive.expired());
}

TEST_F(Generation, EndsWhereItStandsWhenTheProgramEnds) {
    model(Script{}.says(1s, "never"));
    respond("a");
    bridge.reset();
    // The leak check of a sanitizer build judges: whatever waits is freed with the world.
}

TEST(ReflectInt, ReadsTheFirstFieldOfThatLabelAsAnInteger) {
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
    const struct {
        Mirror::Value value;
        std::optional<std::int64_t> integer;
    } table[]{
        {std::int64_t{42}, 42},
        {smallest, smallest},
        {"+7", 7},
        {"-3", -3},
        {"0000000000000000000000042", 42},
        {"9223372036854775807", largest},
        {"-9223372036854775808", smallest},
        {"9223372036854775808", std::nullopt},
        {"-9223372036854775809", std::nullopt},
        {"", std::nullopt},
        {"-", std::nullopt},
        {"+-3", std::nullopt},
        {"4 2", std::nullopt},
        {"42 ", std::nullopt},
        {std::string("42\0", 3), std::nullopt},
        {"\xd9\xa4\xd9\xa2", std::nullopt}, // Arabic-Indic digits
        {"Optional(42)", std::nullopt},
    };
    for (const auto& [value, integer] : table) {
        const Mirror mirror{
            {{std::nullopt, "1"}, {"other", "2"}, {"count", value}, {"count", std::int64_t{5}}}};
        EXPECT_EQ(SystemModelBridge::reflectInt(mirror, "count"), integer);
        EXPECT_EQ(SystemModelBridge::reflectInt(mirror, "Count"), std::nullopt);
    }
}
