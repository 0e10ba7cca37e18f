#include "platform/linux/window/screen_coordinates.h"

#include <gdkmm/display.h>
#include <gdkmm/monitor.h>

#include <cmath>

namespace platform {

Glib::RefPtr<Gdk::Monitor> mainMonitor() {
    const auto display = Gdk::Display::get_default();
    if (!display) return {};
    if (auto primary = display->get_primary_monitor()) return primary;
    return display->get_monitor(0);
}

namespace {

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

} // namespace

int whole(double points) { return static_cast<int>(std::lround(points)); }

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

} // namespace platform
