// Named calls with one argument value and one answer, in both directions, over a messenger. Main thread only.
// A channel that outlives its messenger does nothing; destroying a channel leaves its handler installed.
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

namespace flutter {

// The right to answer one call. The first answer is sent, later ones are ignored. Dropped without an
// answer, none is ever sent and the caller waits for good: only for a host that is going away.
class MethodResult {
public:
    // An empty function makes a result that goes nowhere, as for a call that wants no reply.
    explicit MethodResult(BinaryMessenger::Reply reply);
    MethodResult(MethodResult&& other) noexcept;
    MethodResult& operator=(MethodResult&& other) noexcept;

    void success(const EncodableValue& value = {});
    void error(std::string_view code, const std::optional<std::string>& message = std::nullopt,
               const EncodableValue& details = {});
    void notImplemented();

private:
    void answer(std::vector<std::uint8_t> bytes);

    BinaryMessenger::Reply reply_;
};

struct NotImplemented {
    friend bool operator==(NotImplemented, NotImplemented) = default;
};

// What became of a call made to the other side. An answer that cannot be read is the error "reply".
using CallOutcome = std::variant<EncodableValue, FlutterError, NotImplemented>;

class MethodChannel {
public:
    using Handler = std::function<void(const MethodCall&, MethodResult)>;

    MethodChannel(BinaryMessenger& messenger, std::string name);

    // One way: no answer is asked for.
    void invokeMethod(std::string_view method, EncodableValue arguments = {});
    // `onResult` is called at most once, and never if the messenger ends before the answer comes.
    void invokeMethod(std::string_view method, EncodableValue arguments,
                      std::function<void(CallOutcome)> onResult);

    // Replaces the handler of this name; an empty function removes it. A call that cannot be decoded is
    // answered as one that nobody handles and never reaches the handler.
    void setMethodCallHandler(Handler handler);

private:
    std::weak_ptr<BinaryMessenger> messenger_;
    std::string name_;
};

} // namespace flutter
