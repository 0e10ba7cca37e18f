// Carries byte messages on named channels between the host and the interface, in order. Whoever makes the
// messenger owns it; channels are views of it and may outlive it. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace flutter {

class BinaryMessenger {
public:
    // Takes the answer; zero bytes mean that nobody handles the message. The first call counts.
    using Reply = std::function<void(std::vector<std::uint8_t>)>;
    // The bytes are valid during the call. `reply` may be kept and called later, even when the messenger
    // is gone; for a message that wants no reply it goes nowhere.
    using MessageHandler = std::function<void(std::span<const std::uint8_t> message, Reply reply)>;

    BinaryMessenger() = default;
    BinaryMessenger(const BinaryMessenger&) = delete;
    BinaryMessenger& operator=(const BinaryMessenger&) = delete;
    virtual ~BinaryMessenger() = default;

    // One way.
    virtual void send(std::string_view channel, std::vector<std::uint8_t> message) = 0;
    // `onReply` is called at most once, and never if the messenger ends before the answer comes.
    virtual void send(std::string_view channel, std::vector<std::uint8_t> message, Reply onReply) = 0;
    // One handler per channel: a new one replaces the old, an empty function removes it.
    virtual void setMessageHandler(std::string channel, MessageHandler handler) = 0;

    // Absent once the messenger is gone. Holding it does not keep the messenger alive.
    std::weak_ptr<BinaryMessenger> handle() { return life_; }

private:
    std::shared_ptr<BinaryMessenger> life_{std::make_shared<char>(), this};
};

} // namespace flutter
