#include "platform/uuid.h"

#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace platform {

std::string UUIDString() {
    std::array<std::uint8_t, 16> bytes{};
    // Cannot fail on a kernel that has it; going on with a guessable token would be worse than ending.
    if (getentropy(bytes.data(), bytes.size()) != 0) std::abort();
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // the RFC's variant

    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0F];
    }
    return text;
}

} // namespace platform
