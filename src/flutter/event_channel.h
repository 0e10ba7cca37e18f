// A stream of values from the host to at most one listener in the interface. Main thread only.
#pragma once

#include "flutter/binary_messenger.h"
#include "flutter/encodable_value.h"
#include "flutter/method_channel.h"
#include "flutter/standard_codec.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace flutter {

// Sends one event. It may be kept and called at any time: once its listener has cancelled or was replaced,
// or the messenger is gone, the event is dropped.
using EventSink = std::function<void(EncodableValue)>;

class StreamHandler {
public:
    virtual ~StreamHandler() = default;

    // An error is passed on to the listener. After an error of onListen there is no listener.
    virtual std::optional<FlutterError> onListen(const EncodableValue& arguments, EventSink sink) = 0;
    virtual std::optional<FlutterError> onCancel(const EncodableValue& arguments) = 0;
};

class EventChannel {
public:
    EventChannel(BinaryMessenger& messenger, std::string name);

    // Answers "listen" and "cancel" from now on; destroying the channel does not end that. A "listen"
    // while somebody listens calls onListen again, without onCancel. With the handler gone, calls are
    // answered as ones that nobody handles. An empty pointer removes the handler.
    void setStreamHandler(std::weak_ptr<StreamHandler> handler);

private:
    MethodChannel calls_;
    std::weak_ptr<BinaryMessenger> messenger_;
    std::string name_;
};

} // namespace flutter
