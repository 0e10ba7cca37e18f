// Frames carry messages over the socket between the host and the interface (docs/wire.md). Plain values; any
// thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace flutter {

// The most that the length field of a frame, which counts everything after it, may say.
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

// Absent when the frame would be longer than allowed, or the name of its channel longer than 65535 bytes.
std::optional<std::vector<std::uint8_t>> encodeFrame(FrameKind kind, std::uint32_t id,
                                                     std::string_view channel,
                                                     std::span<const std::uint8_t> payload);
std::optional<std::vector<std::uint8_t>> encodeFrame(const Frame& frame);

// Reads frames from a stream of bytes that arrive in pieces of any size. Keeps only bytes that have arrived,
// whatever length a frame announces.
class FrameReader {
public:
    void feed(std::span<const std::uint8_t> bytes);

    // The next complete frame; absent until more bytes have arrived, and always after an error.
    std::optional<Frame> next();

    // Which rule the stream broke, in one line; absent as long as next() has not found any.
    const std::optional<std::string>& error() const { return error_; }

private:
    std::optional<std::size_t> frameLength();
    void discard(std::size_t count);
    std::nullopt_t fail(std::string reason);

    std::vector<std::uint8_t> buffer_;
    std::size_t start_ = 0; // the bytes before it belong to frames that next() has returned
    std::optional<std::string> error_;
};

} // namespace flutter
