#pragma once

#include "platform/accessibility.h"

#include <sys/types.h>

// Where the keyboard focus is. Main thread only; null when there is none, or the program does not reply.
namespace platform::ax {

// The focused element of a process. A process that is not on the accessibility bus, or shows no elements
// there although it was asked to, has its focused window for an element.
AXUIElementRef focusedElement(pid_t process);

// The window of a process that has the focus.
AXUIElementRef focusedWindow(pid_t process);

// The focused element of the whole desktop; never one of the host itself.
AXUIElementRef systemWideFocusedElement();

// Asks a process to show its elements. True when it could be asked.
bool askToShow(pid_t process);

} // namespace platform::ax
