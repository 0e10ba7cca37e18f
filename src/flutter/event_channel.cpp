#include "flutter/event_channel.h"

#include <utility>

namespace flutter {
namespace {

constexpr std::size_t mostKeptBytes = std::size_t{1} << 16;

// The state of a channel with one handler: whether there is a listener.
class Stream {
public:
    Stream(std::weak_ptr<StreamHandler> handler, std::function<EventSink(std::weak_ptr<char>)> makeSink)
        : handler_(std::move(handler)), makeSink_(std::move(makeSink)) {}

    void handle(const MethodCall& call, MethodResult result) {
        const auto handler = handler_.lock();
        if (handler && call.method == "listen") {
            listen(*handler, call.arguments, result);
        } else if (handler && call.method == "cancel") {
            cancel(*handler, call.arguments, result);
        } else {
            result.notImplemented();
        }
    }

private:
    void listen(StreamHandler& handler, const EncodableValue& arguments, MethodResult& result) {
        listener_ = std::make_shared<char>();
        const auto error = handler.onListen(arguments, makeSink_(listener_));
        if (error) listener_.reset();
        answer(error, result);
    }

    void cancel(StreamHandler& handler, const EncodableValue& arguments, MethodResult& result) {
        if (!std::exchange(listener_, nullptr)) {
            result.error("error", "No active stream to cancel");
            return;
        }
        answer(handler.onCancel(arguments), result);
    }

    static void answer(const std::optional<FlutterError>& error, MethodResult& result) {
        if (error) {
            result.error(error->code, error->message, error->details);
        } else {
            result.success();
        }
    }

    std::weak_ptr<StreamHandler> handler_;
    std::function<EventSink(std::weak_ptr<char>)> makeSink_;
    std::shared_ptr<char> listener_; // its sink sends as long as this exists
};

} // namespace

EventChannel::EventChannel(BinaryMessenger& messenger, std::string name)
    : calls_(messenger, name), messenger_(messenger.handle()), name_(std::move(name)) {}

void EventChannel::setStreamHandler(std::weak_ptr<StreamHandler> handler) {
    if (handler.expired()) {
        calls_.setMethodCallHandler(nullptr);
        return;
    }
    auto makeSink = [messenger = messenger_, name = name_](std::weak_ptr<char> listener) -> EventSink {
        // The next event is encoded in the memory of the last one.
        return [=, memory = std::make_shared<std::vector<std::uint8_t>>()](const EncodableValue& event) {
            const auto live = messenger.lock();
            if (!live || listener.expired()) return;
            // Sending may destroy this function.
            const auto kept = memory; // NOLINT(performance-unnecessary-copy-initialization)
            auto bytes = encodeSuccessEnvelope(event, std::exchange(*kept, {}));
            live->send(name, bytes);
            if (bytes.size() <= mostKeptBytes) *kept = std::move(bytes);
        };
    };
    calls_.setMethodCallHandler(
        [stream = std::make_shared<Stream>(std::move(handler), std::move(makeSink))](
            const MethodCall& call, MethodResult result) { stream->handle(call, std::move(result)); });
}

} // namespace flutter
