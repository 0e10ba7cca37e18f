#include "client/model.h"

#include "flutter/arguments.h"
#include "flutter/standard_codec.h"

#include <optional>
#include <utility>
#include <variant>

namespace quillmark {

using flutter::EncodableMap;

namespace {

constexpr auto eventChannel = "quillmark.quillmark/system_model/events";

std::optional<ModelEvent> eventOf(const flutter::EncodableMap* map) {
    const auto text = [&](std::string_view key) {
        const auto* value = flutter::asString(flutter::member(map, key));
        return value ? *value : std::string();
    };
    const auto kind = text("kind");
    if (kind == "text") return ModelEvent{text("request_id"), ModelEvent::Kind::text, text("text")};
    if (kind == "done") return ModelEvent{text("request_id"), ModelEvent::Kind::done, text("finish_reason")};
    if (kind == "error") return ModelEvent{text("request_id"), ModelEvent::Kind::error, text("error")};
    if (kind == "refused") return ModelEvent{text("request_id"), ModelEvent::Kind::refused, text("reason")};
    return std::nullopt;
}

} // namespace

Model::Model(flutter::BinaryMessenger& messenger, std::function<void(const ModelEvent&)> onEvent)
    : calls_(messenger, "quillmark.quillmark/system_model"), events_(messenger, eventChannel) {
    messenger.setMessageHandler(
        eventChannel,
        [onEvent = std::move(onEvent)](const auto& message, const flutter::BinaryMessenger::Reply& reply) {
            const auto envelope = flutter::decodeEnvelope(message);
            const auto* value = envelope ? std::get_if<flutter::EncodableValue>(&*envelope) : nullptr;
            if (const auto event = value ? eventOf(flutter::asMap(*value)) : std::nullopt) onEvent(*event);
            if (reply) reply({});
        });
    events_.invokeMethod("listen");
}

void Model::respond(const std::string& request, const std::string& instructions, const std::string& prompt,
                    int maxTokens, bool greedy) {
    calls_.invokeMethod("respond", EncodableMap{{"request_id", request},
                                                {"instructions", instructions},
                                                {"prompt", prompt},
                                                {"max_tokens", maxTokens},
                                                {"greedy", greedy}});
}

void Model::availability(std::function<void(std::optional<std::string>)> answered) {
    calls_.invokeMethod(
        "availability", {}, [answered = std::move(answered)](const flutter::CallOutcome& outcome) {
            const auto* value = std::get_if<flutter::EncodableValue>(&outcome);
            const auto* map = value ? flutter::asMap(*value) : nullptr;
            const auto* state = flutter::asString(flutter::member(map, "state"));
            if (state && *state == "available") return answered(std::nullopt);
            const auto* detail = flutter::asString(flutter::member(map, "detail"));
            answered(detail ? *detail : "This host does not say whether it has a language model.");
        });
}

void Model::cancel(const std::string& request) {
    calls_.invokeMethod("cancel", EncodableMap{{"request_id", request}});
}

} // namespace quillmark
