#include "platform/screen.h"

#include "platform/linux/window/screen.h"
#include "platform/linux/window/screen_coordinates.h"

#include <gdkmm/display.h>
#include <gdkmm/monitor.h>

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

std::optional<Screen> Screen::mainScreen() { return screenOf(mainMonitor()); }

} // namespace platform
