// Frames: how messages travel on the socket between the host and the interface. docs/ describes the bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace flutter {

// A frame's length field counts everything that follows it and is at most this.
inline constexpr std::size_t maxFrameLength = std::size_t{64} << 20;

enum class FrameKind : std::uint8_t {
    request = 1, // a message that wants a reply
    message = 2, // a message that wants none
    reply = 3,
};

struct Frame {
    FrameKind kind = FrameKind::message;
    std::uint32_t id = 0; // chosen by the sender of a request and repeated in its reply; 0 in a message
    std::string channel;  // empty in a reply
    std::vector<std::uint8_t> payload;

    friend bool operator==(const Frame&, const Frame&) = default;
};

// Absent when the frame would be longer than allowed, or its channel's name longer than 65535 bytes.
std::optional<std::vector<std::uint8_t>> encodeFrame(const Frame& frame);

// Cuts a byte stream into frames, whatever pieces the bytes arrive in. Holds what arrived and no more.
class FrameReader {
public:
    void feed(std::span<const std::uint8_t> bytes);

    // The next whole frame; absent until more bytes come, and for good after an error.
    std::optional<Frame> next();

    // One line that says which rule the stream broke; absent while it broke none. Found by next().
    const std::optional<std::string>& error() const { return error_; }

private:
    std::optional<std::size_t> frameLength();
    void discard(std::size_t count);
    std::nullopt_t fail(std::string reason);

    std::vector<std::uint8_t> buffer_;
    std::size_t start_ = 0; // what lies before was handed out
    std::optional<std::string> error_;
};

} // namespace flutter
