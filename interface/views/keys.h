// The keys of the window's actions, as GTK writes accelerators. Those of instructions are the person's own.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace quillmark::keys {

inline constexpr auto primary = "<Control>Return"; // what a page is there for
inline constexpr auto copy = "<Control><Shift>c";
inline constexpr auto stop = "<Control>period";
inline constexpr auto again = "<Control>r";
inline constexpr auto undo = "<Control><Shift>o";
inline constexpr auto swap = "<Control>o";
inline constexpr auto history = "<Control>h";
inline constexpr auto settings = "<Control>comma";
inline constexpr auto help = "F1";
inline constexpr auto back = "Escape";

// Those above, and what the host's menu and text fields use.
inline bool isTaken(std::string_view key) {
    constexpr std::array<std::string_view, 20> taken{primary,      copy,
                                                     stop,         again,
                                                     undo,         swap,
                                                     history,      settings,
                                                     help,         back,
                                                     "<Control>q", "<Control>z",
                                                     "F11",        "<Shift><Control>z",
                                                     "<Control>x", "<Control>c",
                                                     "<Control>v", "<Control>a",
                                                     "F10",        "<Control>y"};
    return std::ranges::find(taken, key) != taken.end();
}

} // namespace quillmark::keys
