// Carries messages on named channels between the host and the interface, in order. Owned by its creator;
// channels refer to it weakly and may outlive it. Main thread only.
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
    // Sends or receives the reply to one message; zero bytes mean that the message is not handled. Only the
    // first call has an effect.
    using Reply = std::function<void(std::vector<std::uint8_t>)>;
    // The handler owns the bytes, and frees a long message once it is decoded. `reply` may be kept and called
    // later, even when the messenger is gone. It does nothing when the message wants no reply.
    using MessageHandler = std::function<void(std::vector<std::uint8_t> message, Reply reply)>;

    BinaryMessenger() = default;
    BinaryMessenger(const BinaryMessenger&) = delete;
    BinaryMessenger& operator=(const BinaryMessenger&) = delete;
    virtual ~BinaryMessenger() = default;

    // Wants no reply. The bytes need to be valid during the call only.
    virtual void send(std::string_view channel, std::span<const std::uint8_t> message) = 0;
    // `onReply` is called at most once, and never when the messenger is destroyed before the reply arrives.
    virtual void send(std::string_view channel, std::span<const std::uint8_t> message, Reply onReply) = 0;
    // Each channel has one handler: a new one replaces it, an empty function removes it.
    virtual void setMessageHandler(std::string channel, MessageHandler handler) = 0;

    // Expires with the messenger. Does not keep it alive.
    std::weak_ptr<BinaryMessenger> handle() { return life_; }

private:
    std::shared_ptr<BinaryMessenger> life_{std::make_shared<char>(), this};
};

} // namespace flutter
