// Numbers as little-endian bytes, whatever the machine's own order.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

namespace flutter {

template <class T>
T loadLittleEndian(const std::uint8_t* bytes) {
    std::array<std::uint8_t, sizeof(T)> raw;
    std::copy_n(bytes, sizeof(T), raw.begin());
    if constexpr (std::endian::native == std::endian::big) std::reverse(raw.begin(), raw.end());
    return std::bit_cast<T>(raw);
}

template <class T>
void appendLittleEndian(std::vector<std::uint8_t>& bytes, T number) {
    auto raw = std::bit_cast<std::array<std::uint8_t, sizeof(T)>>(number);
    if constexpr (std::endian::native == std::endian::big) std::reverse(raw.begin(), raw.end());
    bytes.insert(bytes.end(), raw.begin(), raw.end());
}

} // namespace flutter
