// Calls of named methods in both directions, each with one argument value and one reply, over a messenger.
// Main thread only. A channel does nothing once its messenger has been destroyed. Destroying a channel does
// not remove its handler.
#pragma once

#include "flutter/binary_messenger.h"
#include "flutter/encodable_value.h"
#include "flutter/standard_codec.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace flutter {

// Replies to one call. The first reply is sent, later ones are ignored. A result that is destroyed without a
// reply leaves the caller waiting: do that only when the host is about to end.
class MethodResult {
public:
    // With an empty function, replies are not sent anywhere.
    explicit MethodResult(BinaryMessenger::Reply reply);
    MethodResult(MethodResult&& other) noexcept;
    MethodResult& operator=(MethodResult&& other) noexcept;

    void success(const EncodableValue& value = {});
    void error(std::string_view code, const std::optional<std::string>& message = std::nullopt,
               const EncodableValue& details = {});
    void notImplemented();

private:
    void send(std::vector<std::uint8_t> reply);

    BinaryMessenger::Reply reply_;
};

struct NotImplemented {
    friend bool operator==(NotImplemented, NotImplemented) = default;
};

// The reply to a call to the other side. One that cannot be decoded is the error "reply".
using CallOutcome = std::variant<EncodableValue, FlutterError, NotImplemented>;

class MethodChannel {
public:
    using Handler = std::function<void(const MethodCall&, MethodResult)>;

    MethodChannel(BinaryMessenger& messenger, std::string name);

    // Wants no reply.
    void invokeMethod(std::string_view method, EncodableValue arguments = {});
    // `onResult` is called at most once, and never when the messenger is destroyed before the reply arrives.
    void invokeMethod(std::string_view method, EncodableValue arguments,
                      std::function<void(CallOutcome)> onResult);

    // Replaces the channel's handler; an empty function removes it. A call that cannot be decoded is answered
    // as not handled and never reaches the handler.
    void setMethodCallHandler(Handler handler);

private:
    std::weak_ptr<BinaryMessenger> messenger_;
    std::string name_;
};

} // namespace flutter
