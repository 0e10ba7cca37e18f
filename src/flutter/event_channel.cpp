#include "flutter/event_channel.h"

#include <utility>

namespace flutter {
namespace {

// One handler's side of a channel, and whether somebody listens.
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
    std::shared_ptr<char> listener_; // lives while its sink may send
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
        return [=](const EncodableValue& event) {
            const auto live = messenger.lock();
            if (live && !listener.expired()) live->send(name, encodeSuccessEnvelope(event));
        };
    };
    calls_.setMethodCallHandler(
        [stream = std::make_shared<Stream>(std::move(handler), std::move(makeSink))](
            const MethodCall& call, MethodResult result) { stream->handle(call, std::move(result)); });
}

} // namespace flutter
