#pragma once

#include <X11/Xlib.h>
#include <glib.h>

#include <functional>

namespace platform::x11 {

// Hands the events of a connection to a function, from the main loop, for as long as the object lives.
class EventLoopSource {
public:
    // The function must not destroy the source.
    EventLoopSource(Display* display, std::function<void(const XEvent&)> handler);
    ~EventLoopSource();
    EventLoopSource(const EventLoopSource&) = delete;
    EventLoopSource& operator=(const EventLoopSource&) = delete;

    // Handles what has arrived now, without waiting for the main loop.
    void handlePending() const;

private:
    struct Source;
    static gboolean prepare(GSource* source, gint* timeout);
    static gboolean check(GSource* source);
    static gboolean dispatch(GSource* source, GSourceFunc, gpointer);

    Display* display_;
    std::function<void(const XEvent&)> handler_;
    GSource* source_;
};

} // namespace platform::x11
