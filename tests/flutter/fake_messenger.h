// One end of a connection whose other end is the test: it sees what was sent and delivers what it likes.
#pragma once

#include "flutter/binary_messenger.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

class FakeMessenger : public flutter::BinaryMessenger {
public:
    using Bytes = std::vector<std::uint8_t>;

    struct Sent {
        std::string channel;
        Bytes message;
        Reply onReply; // empty for a one-way message
    };
    std::vector<Sent> sent;

    void send(std::string_view channel, std::span<const std::uint8_t> message) override {
        send(channel, message, nullptr);
    }
    void send(std::string_view channel, std::span<const std::uint8_t> message, Reply onReply) override {
        sent.push_back({std::string(channel), Bytes(message.begin(), message.end()), std::move(onReply)});
    }
    void setMessageHandler(std::string channel, MessageHandler handler) override {
        handlers_.erase(channel);
        if (handler) handlers_.emplace(std::move(channel), std::move(handler));
    }

    // The answer to a message, if it was given during the delivery.
    std::optional<Bytes> deliver(const std::string& channel, const Bytes& message) {
        auto answer = std::make_shared<std::optional<Bytes>>();
        const auto found = handlers_.find(channel);
        if (found == handlers_.end()) return Bytes{};
        found->second(message, [answer](Bytes bytes) { *answer = std::move(bytes); });
        return *answer;
    }

private:
    std::map<std::string, MessageHandler> handlers_;
};
