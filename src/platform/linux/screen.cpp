#include "platform/screen.h"

#include "platform/linux/screen_coordinates.h"

#include <gdkmm/display.h>
#include <gdkmm/monitor.h>

#include <cmath>

namespace platform {
namespace {

// The one that the desktop calls primary, else the first. Null when there is none.
Glib::RefPtr<Gdk::Monitor> mainMonitor() {
    const auto display = Gdk::Display::get_default();
    if (!display) return {};
    if (auto primary = display->get_primary_monitor()) return primary;
    return display->get_monitor(0);
}

struct Origin {
    int x = 0;
    int y = 0;
};

Origin origin() {
    const auto monitor = mainMonitor();
    if (!monitor) return {};
    Gdk::Rectangle area;
    monitor->get_geometry(area);
    return {area.get_x(), area.get_y() + area.get_height()};
}

std::optional<Screen> screenOf(const Glib::RefPtr<Gdk::Monitor>& monitor) {
    if (!monitor) return std::nullopt;
    Gdk::Rectangle area;
    monitor->get_workarea(area);
    return Screen(fromToolkit(area));
}

int whole(double points) { return static_cast<int>(std::lround(points)); }

} // namespace

Rect fromToolkit(const Gdk::Rectangle& area) {
    const Origin zero = origin();
    return {static_cast<double>(area.get_x() - zero.x),
            static_cast<double>(zero.y - (area.get_y() + area.get_height())),
            static_cast<double>(area.get_width()), static_cast<double>(area.get_height())};
}

Gdk::Rectangle toToolkit(const Rect& area) {
    const Origin zero = origin();
    return {whole(area.x) + zero.x, zero.y - whole(area.top()), whole(area.width), whole(area.height)};
}

std::optional<Screen> screenNearest(const Rect& area) {
    const auto display = Gdk::Display::get_default();
    const auto place = toToolkit(area);
    return screenOf(display ? display->get_monitor_at_point(place.get_x() + place.get_width() / 2,
                                                            place.get_y() + place.get_height() / 2)
                            : Glib::RefPtr<Gdk::Monitor>());
}

std::optional<Screen> Screen::mainScreen() { return screenOf(mainMonitor()); }

} // namespace platform
