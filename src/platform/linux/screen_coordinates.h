#pragma once

#include "platform/geometry.h"
#include "platform/screen.h"

#include <gdkmm/rectangle.h>

namespace platform {

// The toolkit's coordinates grow downwards from the upper left corner of all screens; these turn them into
// the seam's, which grow upwards from the lower left corner of the main screen, and back.
Rect fromToolkit(const Gdk::Rectangle& area);
Gdk::Rectangle toToolkit(const Rect& area);

// The screen that holds the middle of `area`, else the nearest one; absent when there is no screen.
std::optional<Screen> screenNearest(const Rect& area);

} // namespace platform
