// Reads values in the standard codec from bytes that anybody may have written. Every result is absent when
// the bytes do not hold it; the reader is of no use after that. Padding counts from the first byte.
#pragma once

#include "flutter/encodable_value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace flutter {

class StandardReader {
public:
    explicit StandardReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::optional<std::uint8_t> byte();
    std::optional<EncodableValue> value();
    bool atEnd() const { return position_ == bytes_.size(); }

private:
    using Result = std::optional<EncodableValue>;

    template <class T>
    Result number();
    Result float64();
    Result string();
    Result byteList();
    template <class T>
    Result numberList();
    Result list();
    Result map();

    std::optional<std::size_t> size();
    bool align(std::size_t width);
    const std::uint8_t* take(std::size_t count);
    bool enter(std::size_t values);
    Result child();

    std::size_t left() const { return bytes_.size() - position_; }

    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
    std::size_t promised_ = 0; // values that the open lists and maps still have to hold
    int depth_ = 0;
};

} // namespace flutter
