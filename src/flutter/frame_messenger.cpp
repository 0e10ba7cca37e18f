#include "flutter/frame_messenger.h"

#include "flutter/frame.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace flutter {

// The replies that handlers keep refer to it weakly; a running receive() keeps it alive, because a handler
// may destroy the messenger.
struct FrameMessenger::State : std::enable_shared_from_this<State> {
    std::function<void(std::vector<std::uint8_t>)> write;
    FrameReader reader;
    std::map<std::string, std::shared_ptr<const MessageHandler>, std::less<>> handlers;
    std::unordered_map<std::uint32_t, Reply> waiting; // for a reply of the peer with this id
    std::uint32_t lastId = 0;
    bool handling = false;
    bool ended = false;
    std::optional<std::string> failure;

    // False when the frame would be too long.
    bool send(FrameKind kind, std::uint32_t id, std::string_view channel,
              std::span<const std::uint8_t> payload);
    std::uint32_t freshId();
    void handle(Frame frame);
    void handleReply(Frame frame);
    Reply replyTo(std::uint32_t id);
};

bool FrameMessenger::State::send(FrameKind kind, std::uint32_t id, std::string_view channel,
                                 std::span<const std::uint8_t> payload) {
    auto bytes = encodeFrame(kind, id, channel, payload);
    if (bytes && !ended) write(std::move(*bytes));
    return bytes.has_value();
}

std::uint32_t FrameMessenger::State::freshId() {
    do
        ++lastId;
    while (lastId == 0 || waiting.contains(lastId));
    return lastId;
}

void FrameMessenger::State::handle(Frame frame) {
    if (frame.kind == FrameKind::reply) {
        handleReply(std::move(frame));
        return;
    }
    const bool wantsReply = frame.kind == FrameKind::request;
    auto reply = wantsReply ? replyTo(frame.id) : [](std::vector<std::uint8_t>) {};
    const auto found = handlers.find(frame.channel);
    if (found == handlers.end()) {
        reply({});
        return;
    }
    const auto handler = found->second; // it may remove or replace itself
    (*handler)(std::move(frame.payload), std::move(reply));
}

void FrameMessenger::State::handleReply(Frame frame) {
    auto waiter = waiting.extract(frame.id);
    if (waiter.empty()) {
        failure = "A reply carries id " + std::to_string(frame.id) +
                  ", but no message with that id expects one; reply to each message once, with its own id.";
    } else {
        waiter.mapped()(std::move(frame.payload));
    }
}

BinaryMessenger::Reply FrameMessenger::State::replyTo(std::uint32_t id) {
    return [state = weak_from_this(), answered = std::make_shared<bool>(false),
            id](const std::vector<std::uint8_t>& payload) {
        const auto live = state.lock();
        if (!live || std::exchange(*answered, true)) return;
        if (!live->send(FrameKind::reply, id, {}, payload)) live->send(FrameKind::reply, id, {}, {});
    };
}

FrameMessenger::FrameMessenger(std::function<void(std::vector<std::uint8_t>)> write)
    : state_(std::make_shared<State>()) {
    state_->write = std::move(write);
}

FrameMessenger::~FrameMessenger() { state_->ended = true; }

std::optional<std::string> FrameMessenger::receive(std::span<const std::uint8_t> bytes) {
    const auto state = state_; // a handler may destroy the messenger
    state->reader.feed(bytes);
    if (state->handling) return std::nullopt;

    state->handling = true;
    while (!state->ended && !state->failure) {
        auto frame = state->reader.next();
        if (!frame) break;
        state->handle(std::move(*frame));
    }
    state->handling = false;
    if (!state->failure) state->failure = state->reader.error();
    return state->failure;
}

void FrameMessenger::send(std::string_view channel, std::span<const std::uint8_t> message) {
    state_->send(FrameKind::message, 0, channel, message);
}

void FrameMessenger::send(std::string_view channel, std::span<const std::uint8_t> message, Reply onReply) {
    // The reply may arrive while the message is still being written.
    const auto state = state_;
    const auto id = state->freshId();
    state->waiting.emplace(id, onReply);
    if (state->send(FrameKind::request, id, channel, message)) return;
    state->waiting.erase(id);
    onReply({});
}

void FrameMessenger::setMessageHandler(std::string channel, MessageHandler handler) {
    if (handler) {
        state_->handlers[std::move(channel)] = std::make_shared<const MessageHandler>(std::move(handler));
    } else {
        state_->handlers.erase(channel);
    }
}

bool FrameMessenger::isHandled(std::string_view channel) const { return state_->handlers.contains(channel); }

} // namespace flutter
