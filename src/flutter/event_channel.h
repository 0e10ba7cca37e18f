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

// Sends one event. May be kept and called at any time: it does nothing once its listener has cancelled or was
// replaced, or the messenger is gone.
using EventSink = std::function<void(EncodableValue)>;

class StreamHandler {
public:
    virtual ~StreamHandler() = default;

    // An error is the reply to "listen" or "cancel". After an error of onListen there is no listener.
    virtual std::optional<FlutterError> onListen(const EncodableValue& arguments, EventSink sink) = 0;
    virtual std::optional<FlutterError> onCancel(const EncodableValue& arguments) = 0;
};

class EventChannel {
public:
    EventChannel(BinaryMessenger& messenger, std::string name);

    // From now on "listen" and "cancel" are answered; destroying the channel does not end that. A second
    // "listen" calls onListen again, without onCancel before it. Once the handler has been destroyed, calls
    // are not handled. An empty pointer removes the handler.
    void setStreamHandler(std::weak_ptr<StreamHandler> handler);

private:
    MethodChannel calls_;
    std::weak_ptr<BinaryMessenger> messenger_;
    std::string name_;
};

} // namespace flutter
