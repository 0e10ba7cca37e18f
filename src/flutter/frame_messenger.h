// A messenger over frames, for either end of the socket between the host and the interface. Its owner has the
// socket, and moves the bytes from and to it. One thread only.
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

    // Takes bytes that arrived, in pieces of any size, and handles the frames that are complete, one at a
    // time and in order. When a handler calls it, its frames are handled after that handler has returned. The
    // result is the rule that the peer broke, in one line: the owner then closes the connection, and no later
    // frame is handled.
    [[nodiscard]] std::optional<std::string> receive(std::span<const std::uint8_t> bytes);

    // A message that is too long for a frame is dropped; when it wants a reply, it gets one of zero bytes at
    // once. A reply that is too long for a frame is replaced by one of zero bytes.
    void send(std::string_view channel, std::span<const std::uint8_t> message) override;
    void send(std::string_view channel, std::span<const std::uint8_t> message, Reply onReply) override;
    void setMessageHandler(std::string channel, MessageHandler handler) override;

    // True while the channel has a handler.
    bool isHandled(std::string_view channel) const;

private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace flutter
