// What the interface sends may be anything: no bytes may crash the readers, and what they accept must come
// through a second round unchanged. The first byte says in which pieces the rest arrives.
#include "flutter/arguments.h"
#include "flutter/frame_messenger.h"
#include "flutter/method_channel.h"

#include <algorithm>
#include <cstdlib>

using namespace flutter;

namespace {

void check(bool condition) {
    if (!condition) std::abort();
}

void readArguments(const EncodableValue& value) {
    asBool(value);
    asUInt32(value);
    asInt64(value);
    asDouble(value);
    asStringList(value);
    asStringMap(value);
    member(asMap(value), "key");
}

void readCodec(std::span<const std::uint8_t> bytes) {
    if (const auto value = decodeMessage(bytes)) {
        readArguments(*value);
        check(decodeMessage(encodeMessage(*value)) == value);
    }
    if (const auto call = decodeMethodCall(bytes)) {
        const auto again = decodeMethodCall(encodeMethodCall(*call));
        check(again && again->method == call->method && again->arguments == call->arguments);
    }
    if (const auto envelope = decodeEnvelope(bytes)) {
        if (const auto* error = std::get_if<FlutterError>(&*envelope))
            check(decodeEnvelope(encodeErrorEnvelope(error->code, error->message, error->details)) ==
                  envelope);
    }
}

void readFrames(std::span<const std::uint8_t> bytes, std::size_t piece) {
    FrameMessenger messenger([](const std::vector<std::uint8_t>& written) { check(written.size() >= 9); });
    MethodChannel channel(messenger, "c");
    channel.setMethodCallHandler(
        [](const MethodCall& call, MethodResult result) { result.success(call.arguments); });
    channel.invokeMethod("ask", {}, [](const CallOutcome&) {});

    bool failed = false;
    while (!bytes.empty()) {
        const auto now = bytes.first(std::min(piece, bytes.size()));
        const bool broken = messenger.receive(now).has_value();
        check(broken || !failed);
        failed = broken;
        bytes = bytes.subspan(now.size());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::span bytes(data + 1, size - 1);
    readCodec(bytes);
    readFrames(bytes, std::size_t{1} + data[0]);
    return 0;
}
