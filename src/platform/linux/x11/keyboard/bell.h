#pragma once

namespace platform::x11 {

// Rings the X server's bell. Nothing without a display. Main thread only.
void ringBell();

} // namespace platform::x11
