#include "testing/desktop/startup_messages.h"

#include "testing/desktop/wait.h"

#include <X11/Xlib.h>

#include <optional>
#include <utility>

namespace testbed {

StartupMessages::StartupMessages() : display_(XOpenDisplay(nullptr)) {
    XSelectInput(display_, DefaultRootWindow(display_), PropertyChangeMask);
    XSync(display_, False);
}

StartupMessages::~StartupMessages() { XCloseDisplay(display_); }

// A message comes in pieces of 20 bytes and ends with a zero byte.
std::string StartupMessages::next() {
    std::optional<std::string> message;
    waitUntil([&] {
        XEvent event{};
        while (!message && XCheckTypedEvent(display_, ClientMessage, &event)) {
            if (event.xclient.format != 8) continue;
            std::string& text = parts_[event.xclient.window];
            const std::string piece(std::begin(event.xclient.data.b), std::end(event.xclient.data.b));
            text += piece.substr(0, piece.find('\0'));
            if (piece.find('\0') != std::string::npos) message = std::exchange(text, {});
        }
        return message.has_value();
    });
    return message.value_or("");
}

} // namespace testbed
