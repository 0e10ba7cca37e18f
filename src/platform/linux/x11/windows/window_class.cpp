#include "platform/linux/x11/windows/window_class.h"

#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/Xatom.h>

#include <algorithm>

namespace platform::x11 {

std::optional<WindowClass> windowClass(WindowId window) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr || window == None) return std::nullopt;
    const auto bytes = connection->text(window, XA_WM_CLASS);
    if (!bytes) return std::nullopt;
    WindowClass names;
    names.instance = bytes->substr(0, bytes->find('\0'));
    if (names.instance.size() < bytes->size()) names.name = bytes->substr(names.instance.size() + 1);
    names.name.resize(std::min(names.name.find('\0'), names.name.size()));
    return names;
}

WindowId programWindow(WindowId window) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return None;
    for (; window != None && window != connection->root(); window = parentWindow(window))
        if (windowClass(window)) return window;
    return None;
}

std::string lowerCase(std::string_view name) {
    std::string lower(name);
    for (char& letter : lower)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return lower;
}

} // namespace platform::x11
