#pragma once

#include <X11/Xlib.h>

#include <array>

namespace platform::x11 {

// The keys that are down, as programs see them (one round trip).
class KeysDown {
public:
    explicit KeysDown(Display* display) { XQueryKeymap(display, bits_.data()); }

    bool has(unsigned key) const {
        return (static_cast<unsigned char>(bits_[key / 8]) >> (key % 8) & 1) != 0;
    }

private:
    std::array<char, 32> bits_{};
};

} // namespace platform::x11
