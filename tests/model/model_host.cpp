#include "model/model_host.h"

#include "flutter/arguments.h"

using flutter::EncodableValue;

namespace {

std::string describe(const EncodableValue& value) {
    if (value.isNull()) return "null";
    if (const auto* text = flutter::asString(value)) return *text;
    std::string all;
    if (const auto* map = flutter::asMap(value)) {
        for (const auto& [key, member] : *map)
            all += (all.empty() ? "" : " ") + describe(key) + "=" + describe(member);
    }
    return all;
}

std::string describe(const flutter::Envelope& envelope) {
    if (const auto* value = std::get_if<EncodableValue>(&envelope)) return describe(*value);
    const auto& error = std::get<flutter::FlutterError>(envelope);
    return "error " + error.code + ": " + error.message.value_or("") +
           (error.details.isNull() ? "" : " with details");
}

// "REQUEST KIND KEY=VALUE" of an event that holds these three and nothing else.
std::string describeEvent(const flutter::EncodableMap& event) {
    std::string id, kind, rest;
    for (const auto& [key, value] : event) {
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

} // namespace

std::string ModelHost::ask(const char* channel, std::string method, EncodableValue arguments) {
    const auto answer =
        world.interface().ask(channel, flutter::encodeMethodCall({std::move(method), std::move(arguments)}));
    world.settle();
    if (!answer->bytes) return "unanswered";
    if (answer->bytes->empty()) return "not implemented";
    return describe(flutter::decodeEnvelope(*answer->bytes).value());
}

std::string ModelHost::call(std::string method, EncodableValue arguments) {
    return ask(modelChannel, std::move(method), std::move(arguments));
}

std::vector<std::string> ModelHost::events() {
    std::vector<std::string> events;
    for (const auto& message : world.interface().received) {
        const auto envelope = flutter::decodeEnvelope(message.bytes).value();
        events.push_back(describeEvent(*flutter::asMap(std::get<EncodableValue>(envelope))));
    }
    world.interface().received.clear();
    return events;
}
