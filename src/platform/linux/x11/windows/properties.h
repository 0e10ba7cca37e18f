#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

// What is known of other programs' windows. Main thread only; each costs one round trip or a few.
namespace platform::x11 {

// A window's number on the X server (XID); 0 for none. Once the window is gone another may get the number.
using WindowId = unsigned long;

// The process that owns a window: the one at the other end of its program's connection, else the one that the
// window names (`_NET_WM_PID`), which is another number for a program in a sandbox or on another machine.
// Absent when unknown.
std::optional<pid_t> windowProcess(WindowId window);

// The window's title as its program set it (`_NET_WM_NAME`, else `WM_NAME`).
std::optional<std::string> windowTitle(WindowId window);

// The identifier of the window's application (`_GTK_APPLICATION_ID`), which GTK programs set.
std::optional<std::string> windowApplicationId(WindowId window);

// The window that contains this one; 0 when there is no such window.
WindowId parentWindow(WindowId window);

} // namespace platform::x11
