#include "platform/screen.h"

#include "platform/linux/window/screen.h"
#include "platform/linux/window/screen_coordinates.h"

#include <gdkmm/display.h>
#include <gdkmm/monitor.h>

#include <algorithm>

namespace platform {
namespace {

std::optional<Screen> screenOf(const Glib::RefPtr<Gdk::Monitor>& monitor) {
    if (!monitor) return std::nullopt;
    Gdk::Rectangle area;
    monitor->get_workarea(area);
    return Screen(fromToolkit(area));
}

} // namespace

std::optional<Screen> screenNearest(const Rect& area) {
    const auto display = Gdk::Display::get_default();
    const auto place = toToolkit(area);
    return screenOf(display ? display->get_monitor_at_point(place.get_x() + place.get_width() / 2,
                                                            place.get_y() + place.get_height() / 2)
                            : Glib::RefPtr<Gdk::Monitor>());
}

Rect fitted(Rect frame, const Rect& area) {
    frame.width = std::min(frame.width, area.width);
    frame.height = std::min(frame.height, area.height);
    frame.x = std::clamp(frame.x, area.x, area.x + area.width - frame.width);
    frame.y = std::clamp(frame.y, area.y, area.top() - frame.height);
    return frame;
}

Rect onScreen(const Rect& frame) {
    const auto screen = screenNearest(frame);
    return screen ? fitted(frame, screen->visibleFrame()) : frame;
}

std::optional<Screen> Screen::mainScreen() { return screenOf(mainMonitor()); }

} // namespace platform
