// The standard message and method codecs: values, calls and replies as bytes (docs/wire.md). Plain functions
// without state; any thread.
//
// Encoding allocates once, or not at all when `buffer`, whose contents do not matter, has enough memory. Text
// that is not UTF-8 is written with U+FFFD for each broken byte, because a reader would refuse the whole
// message. Values nested deeper than maxNesting can be written but not read.
//
// The bytes to decode may come from anywhere. The result is the whole value, or absent when the message is
// cut short, has bytes left over, or contains an unknown type, text that is not UTF-8 or nesting beyond
// maxNesting. Decoding allocates in proportion to the size of the message, whatever sizes stand in it.
#pragma once

#include "flutter/encodable_value.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace flutter {

// How deep lists and maps may be nested. A list without lists or maps in it has a depth of one.
inline constexpr int maxNesting = 256;

struct MethodCall {
    std::string method;
    EncodableValue arguments; // null when the caller gave none
};

struct FlutterError {
    std::string code;
    std::optional<std::string> message;
    EncodableValue details;

    friend bool operator==(const FlutterError&, const FlutterError&) = default;
};

// Success with a value, or an error.
using Envelope = std::variant<EncodableValue, FlutterError>;

std::vector<std::uint8_t> encodeMessage(const EncodableValue& value, std::vector<std::uint8_t> buffer = {});
std::optional<EncodableValue> decodeMessage(std::span<const std::uint8_t> message);

std::vector<std::uint8_t> encodeMethodCall(const MethodCall& call, std::vector<std::uint8_t> buffer = {});
std::optional<MethodCall> decodeMethodCall(std::span<const std::uint8_t> message);

std::vector<std::uint8_t> encodeSuccessEnvelope(const EncodableValue& value,
                                                std::vector<std::uint8_t> buffer = {});
std::vector<std::uint8_t> encodeErrorEnvelope(std::string_view code,
                                              const std::optional<std::string>& message = std::nullopt,
                                              const EncodableValue& details = {},
                                              std::vector<std::uint8_t> buffer = {});
// Absent too for zero bytes, the reply to a message that is not handled: test for that before.
std::optional<Envelope> decodeEnvelope(std::span<const std::uint8_t> message);

} // namespace flutter
