#pragma once

#include "platform/linux/x11/windows/properties.h"

namespace platform::x11 {

// True when a window belongs to a program in which the copy, paste and select-all keystrokes mean something
// else, such as interrupting what runs there: terminals first of all.
bool takesNoCopyKeys(WindowId window);

} // namespace platform::x11
