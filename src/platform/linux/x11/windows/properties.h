#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

// What windows of other programs say of themselves. Main thread only; one round trip or a few each.
namespace platform::x11 {

// A window's number on the X server (XID); 0 for none. Numbers are used again once a window has gone.
using WindowId = unsigned long;

// The process that owns a window: the one at the other end of its program's connection, else what the window
// claims (`_NET_WM_PID`), which in a sandbox or on another machine is a number of theirs. Absent when
// unknown.
std::optional<pid_t> windowProcess(WindowId window);

// The window's title as its program set it (`_NET_WM_NAME`, else `WM_NAME`).
std::optional<std::string> windowTitle(WindowId window);

// The identifier of the window's application (`_GTK_APPLICATION_ID`), which GTK programs set.
std::optional<std::string> windowApplicationId(WindowId window);

// The window that this one lies in; 0 when it is gone.
WindowId parentWindow(WindowId window);

} // namespace platform::x11
