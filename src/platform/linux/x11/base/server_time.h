#pragma once

#include <X11/X.h>

namespace platform::x11 {

// The time on the X server's clock, in milliseconds since a moment of its own; it wraps around every 49 days.
// One round trip. Main thread only.
::Time serverTime();

} // namespace platform::x11
