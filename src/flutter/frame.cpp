#include "flutter/frame.h"

#include "flutter/byte_sink.h"
#include "flutter/little_endian.h"

#include <limits>

namespace flutter {
namespace {

constexpr std::size_t lengthSize = 4;
constexpr std::size_t headSize = 5; // kind and id
constexpr std::size_t nameLengthSize = 2;

bool isKnown(std::uint8_t kind) {
    return kind >= static_cast<std::uint8_t>(FrameKind::request) &&
           kind <= static_cast<std::uint8_t>(FrameKind::reply);
}

// The rule that the beginning of a frame, at least its length field, breaks.
std::optional<std::string> brokenRule(std::span<const std::uint8_t> start) {
    const std::size_t length = loadLittleEndian<std::uint32_t>(start.data());
    if (length > maxFrameLength)
        return "A frame announces " + std::to_string(length) + " bytes, but the most is " +
               std::to_string(maxFrameLength) + "; send large data in several messages.";
    if (length < headSize)
        return "A frame announces " + std::to_string(length) + " bytes, but kind and id alone take " +
               std::to_string(headSize) + "; the length counts everything that follows it.";
    if (start.size() > lengthSize && !isKnown(start[lengthSize]))
        return "A frame is of kind " + std::to_string(start[lengthSize]) +
               ", but only 1, 2 and 3 exist; check the length of the frame before it.";
    return std::nullopt;
}

} // namespace

std::optional<std::vector<std::uint8_t>> encodeFrame(FrameKind kind, std::uint32_t id,
                                                     std::string_view channel,
                                                     std::span<const std::uint8_t> payload) {
    const bool named = kind != FrameKind::reply;
    if (payload.size() > maxFrameLength) return std::nullopt;
    if (named && channel.size() > std::numeric_limits<std::uint16_t>::max()) return std::nullopt;
    const std::size_t name = named ? nameLengthSize + channel.size() : 0;
    const std::size_t length = headSize + name + payload.size();
    if (length > maxFrameLength) return std::nullopt;

    std::vector<std::uint8_t> bytes;
    bytes.reserve(lengthSize + length);
    bytes.resize(lengthSize + headSize + name);
    ByteSink sink{bytes.data()};
    sink.number(static_cast<std::uint32_t>(length));
    sink.byte(static_cast<std::uint8_t>(kind));
    sink.number(id);
    if (named) {
        sink.number(static_cast<std::uint16_t>(channel.size()));
        sink.text(channel);
    }
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
}

std::optional<std::vector<std::uint8_t>> encodeFrame(const Frame& frame) {
    return encodeFrame(frame.kind, frame.id, frame.channel, frame.payload);
}

void FrameReader::feed(std::span<const std::uint8_t> bytes) {
    if (error_) return;
    // Each byte is moved a bounded number of times, because at least half of the buffer is dropped each time.
    if (start_ > buffer_.size() / 2) {
        buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(start_));
        start_ = 0;
    }
    buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

std::optional<Frame> FrameReader::next() {
    const auto length = frameLength();
    if (!length || buffer_.size() - start_ < lengthSize + *length) return std::nullopt;

    const std::uint8_t* at = buffer_.data() + start_ + lengthSize;
    const std::uint8_t* const end = at + *length;
    Frame frame;
    frame.kind = static_cast<FrameKind>(*at);
    frame.id = loadLittleEndian<std::uint32_t>(at + 1);
    at += headSize;
    if (frame.kind != FrameKind::reply) {
        const std::size_t room = static_cast<std::size_t>(end - at);
        const std::size_t name = room < nameLengthSize ? 0 : loadLittleEndian<std::uint16_t>(at);
        if (room < nameLengthSize + name)
            return fail("A channel name runs past the end of its frame; check its length.");
        at += nameLengthSize;
        frame.channel.assign(at, at + name);
        at += name;
    }
    frame.payload.assign(at, end);
    discard(lengthSize + *length);
    return frame;
}

// The length field of the next frame; absent when it has not arrived yet or a rule is broken.
std::optional<std::size_t> FrameReader::frameLength() {
    const auto here = std::span(buffer_).subspan(start_);
    if (error_ || here.size() < lengthSize) return std::nullopt;
    if (auto reason = brokenRule(here)) return fail(std::move(*reason));
    return loadLittleEndian<std::uint32_t>(here.data());
}

void FrameReader::discard(std::size_t count) {
    start_ += count;
    if (start_ < buffer_.size()) return;
    // The memory of one long message must not stay allocated.
    constexpr std::size_t mostIdleBytes = std::size_t{1} << 16;
    if (buffer_.capacity() > mostIdleBytes) {
        buffer_ = std::vector<std::uint8_t>(); // assigning {} would keep the memory
    } else {
        buffer_.clear();
    }
    start_ = 0;
}

std::nullopt_t FrameReader::fail(std::string reason) {
    error_ = std::move(reason);
    buffer_ = std::vector<std::uint8_t>();
    start_ = 0;
    return std::nullopt;
}

} // namespace flutter
