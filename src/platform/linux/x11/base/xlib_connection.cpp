#include "platform/linux/x11/base/xlib_connection.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/x11/base/errors.h"

namespace platform::x11 {
namespace {

// How much of one property is read, in the protocol's units of four bytes: 256 KiB.
constexpr long mostUnits = 65536;

struct Property {
    Handle<unsigned char, XFree> data;
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
};

Property read(Display* display, ::Window window, Atom name) {
    Property property;
    unsigned char* data = nullptr;
    unsigned long left = 0;
    if (XGetWindowProperty(display, window, name, 0, mostUnits, False, AnyPropertyType, &property.type,
                           &property.format, &property.count, &left, &data) != Success)
        return {};
    property.data.reset(data);
    if (!property.data) property.count = 0;
    return property;
}

} // namespace

XlibConnection* XlibConnection::shared() {
    static XlibConnection connection(XOpenDisplay(nullptr));
    if (connection.display_ == nullptr) return nullptr;
    keepErrors(connection.display_);
    return &connection;
}

XlibConnection::XlibConnection(Display* display)
    : display_(display), root_(display != nullptr ? DefaultRootWindow(display) : None) {}

Atom XlibConnection::atom(const char* name) {
    for (const auto& [known, value] : atoms_)
        if (known == name) return value;
    return atoms_.emplace_back(name, XInternAtom(display_, name, False)).second;
}

bool XlibConnection::succeeds(const std::function<void()>& requests) {
    const unsigned long first = XNextRequest(display_);
    requests();
    XSync(display_, False);
    return !failedSince(display_, first);
}

std::vector<unsigned long> XlibConnection::values(::Window window, Atom name) {
    const Property property = read(display_, window, name);
    if (property.format != 32) return {};
    const auto* first =
        reinterpret_cast<const unsigned long*>(property.data.get()); // Xlib's form of 32-bit values
    return {first, first + property.count};
}

std::optional<std::string> XlibConnection::text(::Window window, Atom name) {
    const Property property = read(display_, window, name);
    if (property.format != 8) return std::nullopt;
    return std::string(reinterpret_cast<const char*>(property.data.get()), property.count);
}

} // namespace platform::x11
