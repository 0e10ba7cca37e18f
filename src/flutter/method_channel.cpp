#include "flutter/method_channel.h"

#include <utility>

namespace flutter {
namespace {

CallOutcome outcomeOf(const std::vector<std::uint8_t>& reply) {
    if (reply.empty()) return NotImplemented{};
    auto envelope = decodeEnvelope(reply);
    if (!envelope) return FlutterError{"reply", "The answer could not be read", {}};
    return std::visit([](auto&& content) -> CallOutcome { return std::forward<decltype(content)>(content); },
                      std::move(*envelope));
}

} // namespace

MethodResult::MethodResult(BinaryMessenger::Reply reply) : reply_(std::move(reply)) {}

MethodResult::MethodResult(MethodResult&& other) noexcept : reply_(std::exchange(other.reply_, nullptr)) {}

MethodResult& MethodResult::operator=(MethodResult&& other) noexcept {
    reply_ = std::exchange(other.reply_, nullptr);
    return *this;
}

void MethodResult::success(const EncodableValue& value) { send(encodeSuccessEnvelope(value)); }

void MethodResult::error(std::string_view code, const std::optional<std::string>& message,
                         const EncodableValue& details) {
    send(encodeErrorEnvelope(code, message, details));
}

void MethodResult::notImplemented() { send({}); }

void MethodResult::send(std::vector<std::uint8_t> bytes) {
    if (const auto reply = std::exchange(reply_, nullptr)) reply(std::move(bytes));
}

MethodChannel::MethodChannel(BinaryMessenger& messenger, std::string name)
    : messenger_(messenger.handle()), name_(std::move(name)) {}

void MethodChannel::invokeMethod(std::string_view method, EncodableValue arguments) {
    if (const auto messenger = messenger_.lock())
        messenger->send(name_, encodeMethodCall({std::string(method), std::move(arguments)}));
}

void MethodChannel::invokeMethod(std::string_view method, EncodableValue arguments,
                                 std::function<void(CallOutcome)> onResult) {
    if (const auto messenger = messenger_.lock())
        messenger->send(name_, encodeMethodCall({std::string(method), std::move(arguments)}),
                        [onResult = std::move(onResult)](const std::vector<std::uint8_t>& reply) {
                            onResult(outcomeOf(reply));
                        });
}

void MethodChannel::setMethodCallHandler(Handler handler) {
    const auto messenger = messenger_.lock();
    if (!messenger) return;
    if (!handler) {
        messenger->setMessageHandler(name_, nullptr);
        return;
    }
    messenger->setMessageHandler(name_, [handler = std::move(handler)](std::vector<std::uint8_t> message,
                                                                       BinaryMessenger::Reply reply) {
        MethodResult result(std::move(reply));
        const auto call = decodeMethodCall(message);
        message = std::vector<std::uint8_t>(); // a large one would stay in memory beside what was decoded
        if (call) {
            handler(*call, std::move(result));
        } else {
            result.notImplemented();
        }
    });
}

} // namespace flutter
