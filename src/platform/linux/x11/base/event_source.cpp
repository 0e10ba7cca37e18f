#include "platform/linux/x11/base/event_source.h"

#include <utility>

namespace platform::x11 {

struct EventLoopSource::Source {
    GSource base; // GLib requires it to come first
    EventLoopSource* owner;
};

EventLoopSource::EventLoopSource(Display* display, std::function<void(const XEvent&)> handler)
    : display_(display), handler_(std::move(handler)) {
    static GSourceFuncs functions{prepare, check, dispatch, nullptr, nullptr, nullptr};
    source_ = g_source_new(&functions, sizeof(Source));
    reinterpret_cast<Source*>(source_)->owner = this;
    g_source_set_static_name(source_, "X events");
    g_source_add_unix_fd(source_, ConnectionNumber(display), G_IO_IN);
    g_source_attach(source_, nullptr);
}

EventLoopSource::~EventLoopSource() {
    g_source_destroy(source_);
    g_source_unref(source_);
}

// Asks Xlib, not the socket: a synchronous call on the same connection may have read events already.
gboolean EventLoopSource::prepare(GSource* source, gint* timeout) {
    *timeout = -1;
    return check(source);
}

gboolean EventLoopSource::check(GSource* source) {
    return XPending(reinterpret_cast<Source*>(source)->owner->display_) > 0;
}

gboolean EventLoopSource::dispatch(GSource* source, GSourceFunc, gpointer) {
    reinterpret_cast<Source*>(source)->owner->handlePending();
    return G_SOURCE_CONTINUE;
}

void EventLoopSource::handlePending() const {
    while (XPending(display_) > 0) {
        XEvent event{};
        XNextEvent(display_, &event);
        handler_(event);
    }
}

} // namespace platform::x11
