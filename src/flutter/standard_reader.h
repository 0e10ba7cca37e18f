// Reads values in the standard codec from bytes that anybody may have written. Internal to this room.
//
// Every operation is false, or its result absent, when the bytes do not hold what it reads; the reader and
// what it was reading into are of no use then. Padding counts from the first byte.
#pragma once

#include "flutter/encodable_value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace flutter {

class StandardReader {
public:
    explicit StandardReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::optional<std::uint8_t> byte();
    // A value of any type, in place of a null value: so that a list's elements need not be moved into it.
    [[nodiscard]] bool value(EncodableValue& value);
    // A value that must be a string.
    [[nodiscard]] bool string(std::string& text);
    bool atEnd() const { return position_ == bytes_.size(); }

private:
    template <class T>
    bool number(EncodableValue& value);
    bool string(EncodableValue& value);
    bool byteList(EncodableValue& value);
    template <class T>
    bool numberList(EncodableValue& value);
    bool list(EncodableValue& value);
    bool map(EncodableValue& value);

    // Into their argument: g++ 12 stores and loads again an optional of two registers, which costs as much as
    // the rest.
    bool size(std::size_t& count);
    bool text(std::string_view& text);
    bool align(std::size_t width);
    const std::uint8_t* take(std::size_t count);
    bool enter(std::size_t values);
    bool child(EncodableValue& value);

    std::size_t left() const { return bytes_.size() - position_; }

    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
    std::size_t promised_ = 0; // values that the open lists and maps still have to hold
    int depth_ = 0;
};

} // namespace flutter
