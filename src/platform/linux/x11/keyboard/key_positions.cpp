#include "platform/linux/x11/keyboard/key_positions.h"

#include <linux/input-event-codes.h>

#include <array>
#include <cstdint>

namespace platform::x11 {
namespace {

constexpr std::uint8_t none = KEY_RESERVED;

// The index is the host's key code: sixteen to a row, positions named after what a US keyboard types there.
constexpr std::array<std::uint8_t, 128> positions{
    // clang-format off
    /* 00 */ KEY_A, KEY_S, KEY_D, KEY_F, KEY_H, KEY_G, KEY_Z, KEY_X,
    /* 08 */ KEY_C, KEY_V, KEY_102ND, KEY_B, KEY_Q, KEY_W, KEY_E, KEY_R,
    /* 10 */ KEY_Y, KEY_T, KEY_1, KEY_2, KEY_3, KEY_4, KEY_6, KEY_5,
    /* 18 */ KEY_EQUAL, KEY_9, KEY_7, KEY_MINUS, KEY_8, KEY_0, KEY_RIGHTBRACE, KEY_O,
    /* 20 */ KEY_U, KEY_LEFTBRACE, KEY_I, KEY_P, KEY_ENTER, KEY_L, KEY_J, KEY_APOSTROPHE,
    /* 28 */ KEY_K, KEY_SEMICOLON, KEY_BACKSLASH, KEY_COMMA, KEY_SLASH, KEY_N, KEY_M, KEY_DOT,
    /* 30 */ KEY_TAB, KEY_SPACE, KEY_GRAVE, KEY_BACKSPACE, none, KEY_ESC, KEY_RIGHTMETA, KEY_LEFTMETA,
    /* 38 */ KEY_LEFTSHIFT, KEY_CAPSLOCK, KEY_LEFTALT, KEY_LEFTCTRL, KEY_RIGHTSHIFT, KEY_RIGHTALT, KEY_RIGHTCTRL, none,
    /* 40 */ KEY_F17, KEY_KPDOT, none, KEY_KPASTERISK, none, KEY_KPPLUS, none, KEY_NUMLOCK,
    /* 48 */ KEY_VOLUMEUP, KEY_VOLUMEDOWN, KEY_MUTE, KEY_KPSLASH, KEY_KPENTER, none, KEY_KPMINUS, KEY_F18,
    /* 50 */ KEY_F19, KEY_KPEQUAL, KEY_KP0, KEY_KP1, KEY_KP2, KEY_KP3, KEY_KP4, KEY_KP5,
    /* 58 */ KEY_KP6, KEY_KP7, KEY_F20, KEY_KP8, KEY_KP9, KEY_YEN, KEY_RO, KEY_KPJPCOMMA,
    /* 60 */ KEY_F5, KEY_F6, KEY_F7, KEY_F3, KEY_F8, KEY_F9, KEY_HANJA, KEY_F11,
    /* 68 */ KEY_HANGEUL, KEY_F13, KEY_F16, KEY_F14, none, KEY_F10, KEY_COMPOSE, KEY_F12,
    /* 70 */ none, KEY_F15, KEY_INSERT, KEY_HOME, KEY_PAGEUP, KEY_DELETE, KEY_F4, KEY_END,
    /* 78 */ KEY_F2, KEY_PAGEDOWN, KEY_F1, KEY_LEFT, KEY_RIGHT, KEY_DOWN, KEY_UP, none,
    // clang-format on
};

constexpr int firstXKeyCode = 8;

} // namespace

std::optional<unsigned char> xKeyCode(CGKeyCode keyCode) {
    if (keyCode >= positions.size() || positions[keyCode] == none) return std::nullopt;
    return static_cast<unsigned char>(positions[keyCode] + firstXKeyCode);
}

} // namespace platform::x11
