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

// What became of a message that the interface sent.
struct Answer {
    // Absent until the host answers; empty when no one handles the channel.
    std::optional<Bytes> bytes;
    TimePoint at{};
};

// A message that the host sent.
struct Message {
    std::string channel;
    Bytes bytes;
    TimePoint at{};
    // Answers it, at the next turn of the main loop; empty when the host wants no answer.
    flutter::BinaryMessenger::Reply reply;
};

// The interface program, played by the test: it sends messages to the host and keeps what the host sends.
class Interface : public flutter::BinaryMessenger {
public:
    // Sends a message; the host handles it at the next turn of the main loop. The answer fills in when it
    // comes.
    std::shared_ptr<const Answer> ask(std::string channel, Bytes message);

    // What the host has sent, in order.
    std::vector<Message> received;

    // A test that answers the host's messages at once sets this; it is called for each.
    std::function<void(Message&)> onMessage;

    void send(std::string_view channel, Bytes message) override;
    void send(std::string_view channel, Bytes message, Reply onReply) override;
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
