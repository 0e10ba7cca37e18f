#include "flutter/event_channel.h"
#include "flutter/fake_messenger.h"
#include "flutter/hex.h"
#include "flutter/method_channel.h"

#include <gmock/gmock.h>

using namespace flutter;
using testing::ElementsAre;

namespace {

const Bytes nobodyHandlesThis;

struct ChannelsTest : testing::Test {
    std::optional<Bytes> call(const std::string& method, const EncodableValue& arguments = {}) {
        return messenger->deliver("c", encodeMethodCall({method, arguments}));
    }

    std::unique_ptr<FakeMessenger> messenger = std::make_unique<FakeMessenger>();
};

TEST_F(ChannelsTest, AMethodIsAnsweredOnceWithValueErrorOrNotImplemented) {
    std::optional<MethodResult> kept;
    MethodChannel(*messenger, "c").setMethodCallHandler([&](const MethodCall& call, MethodResult result) {
        if (call.method == "later") return void(kept = std::move(result));
        if (call.method == "double") result.success(*call.arguments.getIf<std::int32_t>() * 2);
        if (call.method == "fail") result.error("code", "message");
        if (call.method != "drop") result.notImplemented();
    });
    EXPECT_EQ(call("double", 21), encodeSuccessEnvelope(42));
    EXPECT_EQ(call("fail"), encodeErrorEnvelope("code", "message"));
    EXPECT_EQ(call("other"), nobodyHandlesThis);
    EXPECT_EQ(call("drop"), std::nullopt);
    EXPECT_EQ(call("later"), std::nullopt);
    messenger.reset();
    kept->success();
}

TEST_F(ChannelsTest, ACallThatCannotBeReadNeverReachesTheHandler) {
    MethodChannel channel(*messenger, "c");
    channel.setMethodCallHandler([](const auto&, auto) { ADD_FAILURE() << "reached the handler"; });
    for (const auto* bytes : {"", "000000", "070568656c6c6f", "07016100 00"})
        EXPECT_EQ(messenger->deliver("c", hex(bytes)), nobodyHandlesThis) << bytes;
    channel.setMethodCallHandler(nullptr);
    EXPECT_EQ(call("anything"), nobodyHandlesThis);
}

TEST_F(ChannelsTest, ACallToTheOtherSideLearnsWhatBecameOfIt) {
    MethodChannel channel(*messenger, "c");
    channel.invokeMethod("tell", EncodableMap{{"a", 1}});
    EXPECT_FALSE(messenger->sent.at(0).onReply);
    EXPECT_EQ(messenger->sent.at(0).message, encodeMethodCall({"tell", EncodableMap{{"a", 1}}}));

    const std::pair<Bytes, CallOutcome> answers[] = {
        {encodeSuccessEnvelope("yes"), EncodableValue("yes")},
        {encodeErrorEnvelope("no", "reason", 1), FlutterError{"no", "reason", 1}},
        {nobodyHandlesThis, NotImplemented{}},
        {{7}, FlutterError{"reply", "The answer could not be read", {}}},
    };
    for (const auto& [bytes, expected] : answers) {
        std::optional<CallOutcome> outcome;
        channel.invokeMethod("ask", {}, [&](CallOutcome answer) { outcome = std::move(answer); });
        messenger->sent.back().onReply(bytes);
        EXPECT_EQ(outcome, expected);
    }
}

struct Recorder : StreamHandler {
    std::optional<FlutterError> onListen(const EncodableValue&, EventSink sink) override {
        sinks.push_back(std::move(sink));
        log.emplace_back("listen");
        return refusal;
    }
    std::optional<FlutterError> onCancel(const EncodableValue&) override {
        log.emplace_back("cancel");
        return std::nullopt;
    }
    std::vector<EventSink> sinks;
    std::vector<std::string> log;
    std::optional<FlutterError> refusal;
};

struct EventChannelTest : ChannelsTest {
    EventChannelTest() { channel.setStreamHandler(handler); }

    // The events sent since the last question.
    std::vector<EncodableValue> events() {
        std::vector<EncodableValue> all;
        for (const auto& sent : std::exchange(messenger->sent, {}))
            all.push_back(std::get<EncodableValue>(decodeEnvelope(sent.message).value()));
        return all;
    }

    const Bytes done = encodeSuccessEnvelope({});
    const Bytes noStream = encodeErrorEnvelope("error", "No active stream to cancel");
    std::shared_ptr<Recorder> handler = std::make_shared<Recorder>();
    EventChannel channel{*messenger, "c"};
};

TEST_F(EventChannelTest, SendsEventsFromListenToCancelOnly) {
    EXPECT_EQ(call("cancel"), noStream);
    EXPECT_EQ(call("listen"), done);
    handler->sinks.at(0)("one");
    handler->sinks.at(0)(2);
    EXPECT_THAT(events(), ElementsAre("one", 2));
    EXPECT_EQ(call("cancel"), done);
    handler->sinks.at(0)("late");
    EXPECT_THAT(events(), ElementsAre());
    EXPECT_EQ(call("cancel"), noStream);
    EXPECT_EQ(call("Listen"), nobodyHandlesThis);
    EXPECT_THAT(handler->log, ElementsAre("listen", "cancel"));
}

TEST_F(EventChannelTest, ASecondListenReplacesTheFirst) {
    call("listen");
    EXPECT_EQ(call("listen"), done);
    EXPECT_THAT(handler->log, ElementsAre("listen", "listen"));
    for (const auto& sink : handler->sinks)
        sink("event");
    EXPECT_THAT(events(), ElementsAre("event"));
}

TEST_F(EventChannelTest, ARefusedListenerGetsTheErrorAndNoEvents) {
    handler->refusal = FlutterError{"busy", "not now", 5};
    EXPECT_EQ(call("listen"), encodeErrorEnvelope("busy", "not now", 5));
    handler->sinks.at(0)("event");
    EXPECT_THAT(events(), ElementsAre());
    EXPECT_EQ(call("cancel"), noStream);
}

TEST_F(EventChannelTest, OutlivesItsHandlerAndItsMessenger) {
    call("listen");
    const auto sink = handler->sinks.at(0);
    handler.reset();
    EXPECT_EQ(call("cancel"), nobodyHandlesThis);
    const auto another = std::make_shared<Recorder>();
    channel.setStreamHandler(another);
    channel.setStreamHandler({});
    EXPECT_EQ(call("listen"), nobodyHandlesThis);
    MethodChannel other(*messenger, "c");
    messenger.reset();
    sink("event");
    channel.setStreamHandler({});
    other.invokeMethod("tell");
    other.invokeMethod("ask", {}, [](const CallOutcome&) { ADD_FAILURE() << "there is nobody to answer"; });
}

} // namespace
