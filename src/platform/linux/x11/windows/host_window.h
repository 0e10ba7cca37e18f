#pragma once

#include <cstdint>

using GdkWindow = struct _GdkWindow;

// What only the X server can be told or asked about the host's own window. Main thread only.
namespace platform::x11 {

// Makes a window acceptable to window managers as one that the user wants now, and returns the time to
// present it with. Openbox would otherwise take the person to the window's workspace, and metacity have it
// ask for attention there: with `toActiveSpace` the window moves to the workspace the person is on.
std::uint32_t prepareToPresent(GdkWindow* window, bool toActiveSpace);

// Whether a view that is embedded in the window (XEMBED) takes the keys that are passed on to it.
bool takesForwardedKeys(GdkWindow* view);

} // namespace platform::x11
