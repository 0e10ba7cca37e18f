#pragma once

#include <cstdint>

using GdkWindow = struct _GdkWindow;

// What the X server and the window manager know of the host's own window. Main thread only.
namespace platform::x11 {

// Tells the window manager that the user asks for the window now, and returns the time to present it with.
// With `toActiveSpace` the window moves to the workspace that the user is on; without, openbox takes the user
// to the window's workspace, and metacity only has the window ask for attention there.
std::uint32_t prepareToPresent(GdkWindow* window, bool toActiveSpace);

// Whether the window manager minimises windows; false where none runs.
bool canMinimise(GdkWindow* window);

// Whether a view that is embedded in the window (XEMBED) takes the keys that are passed on to it.
bool takesForwardedKeys(GdkWindow* view);

} // namespace platform::x11
