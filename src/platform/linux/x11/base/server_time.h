#pragma once

#include <X11/X.h>

// The X server's clock, in milliseconds; it wraps every 49 days. Main thread only.
namespace platform::x11 {

// The server's time at this moment (one round trip).
::Time serverTime();

} // namespace platform::x11
