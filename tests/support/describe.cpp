#include "support/describe.h"

#include "flutter/arguments.h"

using flutter::EncodableValue;

namespace {

std::string describe(const EncodableValue& value) {
    if (value.isNull()) return "null";
    if (const auto* text = flutter::asString(value)) return *text;
    if (const auto flag = flutter::asBool(value)) return *flag ? "true" : "false";
    const auto* map = flutter::asMap(value);
    if (!map) return "another type";
    std::string all;
    for (const auto& [key, member] : *map)
        all += (all.empty() ? "" : " ") + describe(key) + "=" + describe(member);
    return all;
}

} // namespace

std::string describeAnswer(const std::vector<std::uint8_t>& message) {
    if (message.empty()) return "not implemented";
    const auto envelope = flutter::decodeEnvelope(message).value();
    if (const auto* value = std::get_if<EncodableValue>(&envelope)) return describe(*value);
    const auto& error = std::get<flutter::FlutterError>(envelope);
    return "error " + error.code + ": " + error.message.value_or("") +
           (error.details.isNull() ? "" : " with details");
}

std::string describeEvent(const std::vector<std::uint8_t>& message) {
    const auto envelope = flutter::decodeEnvelope(message).value();
    std::string id, kind, rest;
    for (const auto& [key, value] : *flutter::asMap(std::get<EncodableValue>(envelope))) {
        const std::string name = describe(key);
        if (name == "request_id")
            id = describe(value);
        else if (name == "kind")
            kind = describe(value);
        else
            rest += " " + name + "=" + describe(value);
    }
    return id + " " + kind + rest;
}
