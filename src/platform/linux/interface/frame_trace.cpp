#include "platform/linux/interface/frame_trace.h"

#include "flutter/standard_codec.h"
#include "platform/linux/base/trace.h"
#include "platform/linux/interface/value_words.h"

#include <utility>

namespace platform {
namespace {

using flutter::Frame;
using flutter::FrameKind;

std::string bytes(std::size_t count) { return std::to_string(count) + (count == 1 ? " byte" : " bytes"); }

std::string shown(const flutter::EncodableValue& value) { return words(value, trace::showsTexts()); }

std::string shown(const flutter::Envelope& envelope) {
    if (const auto* error = std::get_if<flutter::FlutterError>(&envelope))
        return "error \"" + error->code + "\", " +
               (error->message ? shown(flutter::EncodableValue(*error->message)) : "no message");
    return shown(std::get<flutter::EncodableValue>(envelope));
}

} // namespace

FrameTrace::FrameTrace(std::function<bool(std::string_view)> isHandled) : isHandled_(std::move(isHandled)) {}

void FrameTrace::received(std::span<const std::uint8_t> arrived) {
    read(fromInterface_, fromHost_, arrived);
    if (fromInterface_.reader.error())
        trace::write(std::string(fromInterface_.arrow) +
                     "bytes that are no frame: " + *fromInterface_.reader.error());
}

void FrameTrace::sent(std::span<const std::uint8_t> frames) { read(fromHost_, fromInterface_, frames); }

void FrameTrace::read(Direction& direction, Direction& other, std::span<const std::uint8_t> arrived) {
    direction.reader.feed(arrived);
    while (const auto frame = direction.reader.next())
        trace::write(std::string(direction.arrow) +
                     (frame->kind == FrameKind::reply ? reply(other, *frame) : message(direction, *frame)));
}

std::string FrameTrace::message(Direction& direction, const Frame& frame) {
    const bool wantsReply = frame.kind == FrameKind::request;
    const auto call = flutter::decodeMethodCall(frame.payload);
    const auto event = call ? std::nullopt : flutter::decodeEnvelope(frame.payload);

    std::string name = wantsReply ? "call " + std::to_string(frame.id) + ", " : "";
    name += call    ? '"' + call->method + '"'
            : event ? "event"
                    : bytes(frame.payload.size()) + " that are no call";
    if (wantsReply) {
        Request request{name, "the channel has no such method", std::chrono::steady_clock::now()};
        if (!call) request.unhandled = "the call cannot be decoded";
        if (&direction == &fromInterface_ && !isHandled_(frame.channel))
            request.unhandled = "the host has no channel \"" + frame.channel + '"';
        direction.requests[frame.id] = std::move(request);
    }
    name += " on " + frame.channel;
    if (call) return name + ": " + shown(call->arguments);
    return event ? name + ": " + shown(*event) : name;
}

std::string FrameTrace::reply(Direction& asked, const Frame& frame) {
    const auto request = asked.requests.extract(frame.id);
    if (request.empty()) return "reply to call " + std::to_string(frame.id) + ", which was never made";
    const auto& [name, unhandled, at] = request.mapped();
    const std::string start = "reply to " + name + " after " + trace::since(at) + ": ";
    if (frame.payload.empty()) return start + "not handled, because " + unhandled;
    const auto envelope = flutter::decodeEnvelope(frame.payload);
    return start + (envelope ? shown(*envelope) : bytes(frame.payload.size()) + " that are no reply");
}

} // namespace platform
