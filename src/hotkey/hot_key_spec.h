// A hot key as the interface describes it. A plain record.
#pragma once

#include <cstdint>

struct HotKeySpec {
    std::uint32_t key = 0;       // a position on the keyboard, see platform::CGKeyCode
    std::uint32_t modifiers = 0; // platform::cmdKey, shiftKey, optionKey, controlKey

    bool operator==(const HotKeySpec&) const = default;
};
