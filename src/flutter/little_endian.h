// Numbers as little-endian bytes, whatever the machine's own order. Internal to this room.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace flutter {

template <class T>
T loadLittleEndian(const std::uint8_t* bytes) {
    std::array<std::uint8_t, sizeof(T)> raw;
    std::copy_n(bytes, sizeof(T), raw.begin());
    if constexpr (std::endian::native == std::endian::big) std::reverse(raw.begin(), raw.end());
    return std::bit_cast<T>(raw);
}

template <class T>
void storeLittleEndian(std::uint8_t* bytes, T number) {
    auto raw = std::bit_cast<std::array<std::uint8_t, sizeof(T)>>(number);
    if constexpr (std::endian::native == std::endian::big) std::reverse(raw.begin(), raw.end());
    std::copy_n(raw.begin(), sizeof(T), bytes);
}

} // namespace flutter
