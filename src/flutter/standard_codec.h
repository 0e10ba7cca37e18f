// The standard message and method codecs: how values, calls and replies become bytes, and back.
// Plain functions without state, usable on any thread. docs/ describes the bytes.
//
// Decoding takes bytes from anybody. It yields the whole value or nothing: truncation, trailing bytes, an
// unknown type, text that is not UTF-8 and nesting beyond maxNesting are all the same absent result, and
// memory stays in proportion to the message, whatever sizes it claims.
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

// Lists and maps may lie in each other this deep. The first list or map counts as one.
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

// Text that is not UTF-8 is written with U+FFFD for what is broken, because a reader would refuse the
// whole message. Values nested deeper than maxNesting can be written but not read.
std::vector<std::uint8_t> encodeMessage(const EncodableValue& value);
std::optional<EncodableValue> decodeMessage(std::span<const std::uint8_t> message);

std::vector<std::uint8_t> encodeMethodCall(const MethodCall& call);
std::optional<MethodCall> decodeMethodCall(std::span<const std::uint8_t> message);

std::vector<std::uint8_t> encodeSuccessEnvelope(const EncodableValue& value);
std::vector<std::uint8_t> encodeErrorEnvelope(std::string_view code,
                                              const std::optional<std::string>& message = std::nullopt,
                                              const EncodableValue& details = {});
// A reply of zero bytes (nobody handles the call) is no envelope either: test for it first.
std::optional<Envelope> decodeEnvelope(std::span<const std::uint8_t> message);

} // namespace flutter
