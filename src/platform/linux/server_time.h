#pragma once

#include <X11/X.h>

// The X server's clock, in milliseconds; it wraps every 49 days. Main thread only.
namespace platform::x11 {

// The server's time at this moment (one round trip).
::Time serverTime();

// When the user last asked the host for something with its hot key; 0 when not yet. A window that is shown
// on the user's wish gives this time, or a window manager may leave it behind the others.
::Time lastUserTime();
void setLastUserTime(::Time time);

} // namespace platform::x11
