#pragma once

#include <X11/X.h>

namespace platform::x11 {

// True when a window belongs to a program in which the copy, paste and select-all keystrokes mean something
// else, such as interrupting what runs there: terminals first of all.
bool takesNoCopyKeys(::Window window);

} // namespace platform::x11
