#include "flutter/frame_messenger.h"

#include "flutter/frame.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace flutter {

// Shared with the replies that are still out and with a running receive(), which both may outlive the
// messenger.
struct FrameMessenger::Connection : std::enable_shared_from_this<Connection> {
    std::function<void(std::vector<std::uint8_t>)> write;
    FrameReader reader;
    std::map<std::string, std::shared_ptr<const MessageHandler>, std::less<>> handlers;
    std::unordered_map<std::uint32_t, Reply> waiting; // for the peer's reply, by id
    std::uint32_t lastId = 0;
    bool handling = false;
    bool ended = false;
    std::optional<std::string> failure;

    bool send(const Frame& frame);
    std::uint32_t freshId();
    void handle(Frame frame);
    void handleReply(Frame frame);
    Reply replyTo(std::uint32_t id);
};

bool FrameMessenger::Connection::send(const Frame& frame) {
    auto bytes = encodeFrame(frame);
    if (bytes && !ended) write(std::move(*bytes));
    return bytes.has_value();
}

std::uint32_t FrameMessenger::Connection::freshId() {
    do
        ++lastId;
    while (lastId == 0 || waiting.contains(lastId));
    return lastId;
}

void FrameMessenger::Connection::handle(Frame frame) {
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
    (*handler)(frame.payload, std::move(reply));
}

void FrameMessenger::Connection::handleReply(Frame frame) {
    auto waiter = waiting.extract(frame.id);
    if (waiter.empty()) {
        failure = "A reply carries id " + std::to_string(frame.id) +
                  ", but no message of that id waits for one; answer each message once, with its own id.";
    } else {
        waiter.mapped()(std::move(frame.payload));
    }
}

BinaryMessenger::Reply FrameMessenger::Connection::replyTo(std::uint32_t id) {
    return [connection = weak_from_this(), answered = std::make_shared<bool>(false),
            id](std::vector<std::uint8_t> payload) {
        const auto live = connection.lock();
        if (!live || std::exchange(*answered, true)) return;
        Frame frame{FrameKind::reply, id, {}, std::move(payload)};
        if (live->send(frame)) return;
        frame.payload.clear();
        live->send(frame);
    };
}

FrameMessenger::FrameMessenger(std::function<void(std::vector<std::uint8_t>)> write)
    : connection_(std::make_shared<Connection>()) {
    connection_->write = std::move(write);
}

FrameMessenger::~FrameMessenger() { connection_->ended = true; }

std::optional<std::string> FrameMessenger::receive(std::span<const std::uint8_t> bytes) {
    const auto connection = connection_; // a handler may end the messenger
    connection->reader.feed(bytes);
    if (connection->handling) return std::nullopt;

    connection->handling = true;
    while (!connection->ended && !connection->failure) {
        auto frame = connection->reader.next();
        if (!frame) break;
        connection->handle(std::move(*frame));
    }
    connection->handling = false;
    if (!connection->failure) connection->failure = connection->reader.error();
    return connection->failure;
}

void FrameMessenger::send(std::string_view channel, std::vector<std::uint8_t> message) {
    connection_->send({FrameKind::message, 0, std::string(channel), std::move(message)});
}

void FrameMessenger::send(std::string_view channel, std::vector<std::uint8_t> message, Reply onReply) {
    // The reply may come while the message is still being written.
    const auto connection = connection_;
    const auto id = connection->freshId();
    connection->waiting.emplace(id, onReply);
    if (connection->send({FrameKind::request, id, std::string(channel), std::move(message)})) return;
    connection->waiting.erase(id);
    onReply({});
}

void FrameMessenger::setMessageHandler(std::string channel, MessageHandler handler) {
    if (handler) {
        connection_->handlers[std::move(channel)] =
            std::make_shared<const MessageHandler>(std::move(handler));
    } else {
        connection_->handlers.erase(channel);
    }
}

bool FrameMessenger::isHandled(std::string_view channel) const {
    return connection_->handlers.contains(channel);
}

} // namespace flutter
