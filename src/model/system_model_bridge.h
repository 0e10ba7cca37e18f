// Gives the interface the system's on-device language model: says whether it can be used, and runs
// generations whose growing text and outcome reach the interface as events.
//
// The main window owns the bridge, and a running generation holds it. Main thread only, except emit(); a
// generation runs in the background and reaches the main thread through the main queue alone, so that nothing
// here needs a lock.
#pragma once

#include "flutter/binary_messenger.h"
#include "flutter/encodable_value.h"
#include "flutter/event_channel.h"
#include "flutter/method_channel.h"
#include "model/generation_request.h"
#include "platform/reflection.h"
#include "platform/task.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

class SystemModelBridge : public flutter::StreamHandler,
                          public std::enable_shared_from_this<SystemModelBridge> {
public:
    // The new bridge with the handlers of both channels installed. Destroying it leaves them installed and
    // running generations running.
    static std::shared_ptr<SystemModelBridge> create(flutter::BinaryMessenger& messenger);

    std::optional<flutter::FlutterError> onListen(const flutter::EncodableValue& arguments,
                                                  flutter::EventSink sink) override;
    std::optional<flutter::FlutterError> onCancel(const flutter::EncodableValue& arguments) override;

    // Whether the model can be used at this moment and, if not, why: all values are text.
    flutter::EncodableMap availability() const;

    // The integer in the first field of that label, or in its textual description; absent when there is none.
    static std::optional<std::int64_t> reflectInt(const platform::Mirror& value, std::string_view label);

private:
    explicit SystemModelBridge(flutter::BinaryMessenger& messenger);

    // The method table; every call is answered exactly once.
    void handle(const flutter::MethodCall& call, flutter::MethodResult result);
    void respond(const flutter::EncodableMap* arguments, flutter::MethodResult result);
    void cancel(const flutter::EncodableMap* arguments);
    void respond(GenerationRequest request);
    // Whether the system is recent enough to have a model at all.
    static bool systemHasLanguageModel();

    // Delivers an event to whoever listens when its turn comes, in order. Any thread.
    void emit(flutter::EncodableMap event);

    static platform::Task generate(std::weak_ptr<SystemModelBridge> weak, GenerationRequest request);

    flutter::MethodChannel method_;
    flutter::EventChannel events_;
    flutter::EventSink sink_; // empty while nobody listens
    // Under a request's identifier, the latest generation that was started under it, until one of them ends.
    std::unordered_map<std::string, platform::Task> tasks_;
};
