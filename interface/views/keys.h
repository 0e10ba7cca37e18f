// The keys of the window's actions, as GTK writes accelerators. Those of instructions are the person's own.
#pragma once

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

} // namespace quillmark::keys
