#pragma once

#include "platform/geometry.h"

#include <gdkmm/monitor.h>
#include <gdkmm/rectangle.h>

namespace platform {

// The toolkit's coordinates grow downwards from the upper left corner of all screens; these turn them into
// the seam's, which grow upwards from the lower left corner of the main screen, and back.
Rect fromToolkit(const Gdk::Rectangle& area);
Gdk::Rectangle toToolkit(const Rect& area);

// The nearest whole pixel.
int whole(double points);

// The monitor that the desktop calls primary, else the first. Null when there is none.
Glib::RefPtr<Gdk::Monitor> mainMonitor();

} // namespace platform
