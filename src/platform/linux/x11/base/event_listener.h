#pragma once

#include <X11/Xlib.h>

#include <functional>

namespace platform::x11 {

// Hands every event of the host's connection to a function for as long as the object lives: from the main
// loop, and also while the main thread pauses (`platform::usleep`). An extension's event comes with its data.
// There must be a connection. Main thread only.
class [[nodiscard]] EventListener {
public:
    explicit EventListener(std::function<void(const XEvent&)> listener);
    ~EventListener();
    EventListener(const EventListener&) = delete;
    EventListener& operator=(const EventListener&) = delete;

    // Hands out at once whatever the server has sent by now (one round trip).
    static void handlePending();

private:
    struct Sources;
    static Sources& sources();
    static void handOut(XEvent event);

    std::function<void(const XEvent&)> listener_;
};

} // namespace platform::x11
