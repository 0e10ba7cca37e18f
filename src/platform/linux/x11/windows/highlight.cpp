#include "platform/linux/x11/windows/highlight.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/windows/front_window.h"

#include <X11/extensions/shape.h>

#include <optional>

namespace platform::x11 {
namespace {

constexpr unsigned thickness = 6; // pixels

// On the screen.
std::optional<XRectangle> areaOf(XlibConnection& connection, ::Window window) {
    ::Window root = 0;
    ::Window child = 0;
    int x = 0;
    int y = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    if (!XGetGeometry(connection.display(), window, &root, &x, &y, &width, &height, &border, &depth) ||
        !XTranslateCoordinates(connection.display(), window, connection.root(), 0, 0, &x, &y, &child) ||
        width <= 2 * thickness || height <= 2 * thickness)
        return std::nullopt;
    return XRectangle{static_cast<short>(x), static_cast<short>(y), static_cast<unsigned short>(width),
                      static_cast<unsigned short>(height)};
}

unsigned long orange(Display* display) {
    XColor shown{};
    XColor exact{};
    const bool has = XAllocNamedColor(display, DefaultColormap(display, DefaultScreen(display)),
                                      "dark orange", &shown, &exact) != 0;
    return has ? shown.pixel : WhitePixel(display, DefaultScreen(display));
}

} // namespace

Highlight::Highlight() {
    XlibConnection* connection = XlibConnection::shared();
    const auto front = frontWindow();
    const auto area = connection && front ? areaOf(*connection, front->window) : std::nullopt;
    if (!area) return;
    Display* display = connection->display();
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    attributes.background_pixel = orange(display);
    frame_ = XCreateWindow(display, connection->root(), area->x, area->y, area->width, area->height, 0,
                           CopyFromParent, InputOutput, CopyFromParent, CWOverrideRedirect | CWBackPixel,
                           &attributes);
    XRectangle inside{short{thickness}, short{thickness},
                      static_cast<unsigned short>(area->width - 2 * thickness),
                      static_cast<unsigned short>(area->height - 2 * thickness)};
    XShapeCombineRectangles(display, frame_, ShapeBounding, 0, 0, &inside, 1, ShapeSubtract, Unsorted);
    XShapeCombineRectangles(display, frame_, ShapeInput, 0, 0, nullptr, 0, ShapeSet, Unsorted);
    XMapRaised(display, frame_);
    XFlush(display);
}

Highlight::~Highlight() {
    if (frame_ == 0) return;
    XDestroyWindow(XlibConnection::shared()->display(), frame_);
    XFlush(XlibConnection::shared()->display());
}

} // namespace platform::x11
