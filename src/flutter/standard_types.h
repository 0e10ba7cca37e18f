// The type bytes of the standard codec, shared by its reader and its writer.
#pragma once

#include <cstdint>

namespace flutter {

enum class StandardType : std::uint8_t {
    null = 0x00,
    yes = 0x01,
    no = 0x02,
    int32 = 0x03,
    int64 = 0x04,
    largeInteger = 0x05, // hexadecimal digits; only read, as a string
    float64 = 0x06,
    string = 0x07,
    byteList = 0x08,
    int32List = 0x09,
    int64List = 0x0A,
    float64List = 0x0B,
    list = 0x0C,
    map = 0x0D,
    float32List = 0x0E,
};

// A size up to 253 is one byte. These bytes stand before a size of 16 and of 32 bits.
inline constexpr std::uint8_t size16 = 0xFE;
inline constexpr std::uint8_t size32 = 0xFF;

} // namespace flutter
