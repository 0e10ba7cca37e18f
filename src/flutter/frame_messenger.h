// A messenger over frames: one end of the socket between the host and the interface (both ends use it).
// It neither opens nor closes the socket; its owner moves the bytes. Main thread only.
#pragma once

#include "flutter/binary_messenger.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace flutter {

class FrameMessenger : public BinaryMessenger {
public:
    // `write` takes whole frames, in order; it must not block.
    explicit FrameMessenger(std::function<void(std::vector<std::uint8_t> bytes)> write);
    ~FrameMessenger() override;

    // Takes bytes as they arrived, in any pieces, and handles the frames that are complete, one at a time
    // and in order: called from inside a handler, it leaves them to the call that is already running.
    // Returns a line when the peer broke the rules; the owner then closes the connection, and nothing
    // that arrives later is handled.
    [[nodiscard]] std::optional<std::string> receive(std::span<const std::uint8_t> bytes);

    // A message too long for a frame is dropped; if it wanted a reply, it gets one of zero bytes at once.
    // A reply too long for a frame becomes one of zero bytes.
    void send(std::string_view channel, std::vector<std::uint8_t> message) override;
    void send(std::string_view channel, std::vector<std::uint8_t> message, Reply onReply) override;
    void setMessageHandler(std::string channel, MessageHandler handler) override;

    // True while the channel has a handler.
    bool isHandled(std::string_view channel) const;

private:
    struct Connection;
    std::shared_ptr<Connection> connection_;
};

} // namespace flutter
