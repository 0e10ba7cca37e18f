// A message from the interface may be any bytes. What is accepted as a value must come through a second round
// unchanged, and may be read as any argument.
#include "check.h"
#include "flutter/arguments.h"
#include "flutter/standard_codec.h"

using namespace flutter;

namespace {

void readArguments(const EncodableValue& value) {
    asBool(value);
    asUInt32(value);
    asInt64(value);
    asDouble(value);
    asStringList(value);
    asStringMap(value);
    member(asMap(value), "key");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(data, size);
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
    return 0;
}
