#pragma once

#include "flutter/binary_messenger.h"
#include "platform/simulated/clock.h"
#include "platform/view_controller.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace simulated {

using Bytes = std::vector<std::uint8_t>;

// The host's reply to a message from the interface.
struct HostReply {
    // Absent until the host replies; empty when nobody handles the channel.
    std::optional<Bytes> bytes;
    TimePoint at{};
};

// A message that the host sent.
struct Message {
    std::string channel;
    Bytes bytes;
    TimePoint at{};
    // Replies to it: the host gets the reply at the next turn of the main loop. An empty function when the
    // host wants none.
    flutter::BinaryMessenger::Reply reply;
};

// The test in the place of the interface program: it sends messages to the host and keeps what the host
// sends.
class Interface : public flutter::BinaryMessenger {
public:
    // Sends a message, which the host handles at the next turn of the main loop. The result is filled in when
    // the host replies.
    std::shared_ptr<const HostReply> ask(std::string channel, Bytes message);

    // What the host has sent, in order.
    std::vector<Message> received;

    // Called for each message of the host, inside its send.
    std::function<void(Message&)> onMessage;

    void send(std::string_view channel, std::span<const std::uint8_t> message) override;
    void send(std::string_view channel, std::span<const std::uint8_t> message, Reply onReply) override;
    void setMessageHandler(std::string channel, MessageHandler handler) override;

private:
    void deliver(const std::string& channel, std::span<const std::uint8_t> message, Reply reply);

    std::map<std::string, MessageHandler, std::less<>> handlers_;
};

} // namespace simulated

class flutter::ViewController::Native {
public:
    simulated::Interface interface;
};
