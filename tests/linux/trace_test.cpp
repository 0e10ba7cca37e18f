#include "flutter/frame.h"
#include "flutter/standard_codec.h"
#include "platform/linux/base/trace.h"
#include "platform/linux/interface/frame_trace.h"

#include <gmock/gmock.h>

namespace platform {
namespace {

using flutter::EncodableMap;
using flutter::EncodableValue;
using flutter::FrameKind;
using testing::HasSubstr;
using Bytes = std::vector<std::uint8_t>;

const EncodableValue capture =
    EncodableMap{{"text", "Dear Anna"}, {"app_id", "mousepad"}, {"truncated", false}, {"note", "line\nline"}};

// The lines that frames, and perhaps bytes that are none, leave in a trace.
struct Trace : testing::Test {
    Trace() { testing::internal::CaptureStderr(); }
    ~Trace() override { trace::start(trace::Detail::none); }

    void received(const flutter::Frame& frame) { frames.received(flutter::encodeFrame(frame).value()); }
    void sent(const flutter::Frame& frame) { frames.sent(flutter::encodeFrame(frame).value()); }
    static std::string lines() { return testing::internal::GetCapturedStderr(); }

    FrameTrace frames{[](std::string_view channel) { return channel == "known"; }};
};

Bytes call(const char* method, const EncodableValue& arguments = {}) {
    return flutter::encodeMethodCall({method, arguments});
}

TEST_F(Trace, TellsWhyACallIsNotHandled) {
    trace::start(trace::Detail::words);
    const struct {
        const char* channel;
        Bytes payload;
        const char* reason;
    } cases[] = {
        {"known", call("nonsense"), "the channel has no such method"},
        {"unknown", call("show"), "the host has no channel \"unknown\""},
        {"known", {0xff, 0xff}, "the call cannot be decoded"},
    };
    for (std::uint32_t id = 0; const auto& [channel, payload, reason] : cases) {
        received({FrameKind::request, ++id, channel, payload});
        sent({FrameKind::reply, id, "", {}});
    }
    const std::string written = lines();
    for (const auto& one : cases)
        EXPECT_THAT(written, HasSubstr(std::string("not handled, because ") + one.reason));
}

TEST_F(Trace, ShowsTextsOnlyWhenAskedTo) {
    for (const bool texts : {false, true}) {
        if (texts) testing::internal::CaptureStderr();
        trace::start(texts ? trace::Detail::texts : trace::Detail::words);
        sent({FrameKind::message, 0, "known", call("capture", capture)});
        sent({FrameKind::message, 0, "events",
              flutter::encodeSuccessEnvelope(EncodableMap{{"text", "Dear Anna"}})});
        received({FrameKind::request, 7, "known", call("paste", EncodableMap{{"text", "Dear Anna"}})});
        sent({FrameKind::reply, 7, "", flutter::encodeErrorEnvelope("busy", "A paste is already pending")});
        received({FrameKind::request, 8, "known", call("paste")});
        sent({FrameKind::reply, 8, "", flutter::encodeSuccessEnvelope("pasted")});
        const std::string written = lines();
        for (const char* always :
             {"capture", "\"app_id\": \"mousepad\"", "\"truncated\": false", "event on events",
              "reply to call 7, \"paste\" after", "error \"busy\"", "\"pasted\""})
            EXPECT_THAT(written, HasSubstr(always));
        EXPECT_THAT(written, HasSubstr(texts ? "\"text\": \"Dear Anna\"" : "\"text\": string of 9 bytes"));
        EXPECT_EQ(written.find("Dear Anna") != std::string::npos, texts);
        EXPECT_EQ(std::ranges::count(written, '\n'), 6) << "one line for each";
    }
}

TEST_F(Trace, SaysWhichRuleBrokenFramesBreak) {
    trace::start(trace::Detail::words);
    frames.received(Bytes{5, 0, 0, 0, 9, 0, 0, 0, 0});
    EXPECT_THAT(lines(), HasSubstr("kind 9"));
}

TEST_F(Trace, WritesNothingWhenItIsOff) {
    trace::write("anything");
    EXPECT_EQ(lines(), "");
}

} // namespace
} // namespace platform
