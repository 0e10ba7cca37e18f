#include "platform/linux/x11/base/event_listener.h"

#include "platform/linux/base/pause.h"
#include "platform/linux/x11/base/event_source.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace platform::x11 {
namespace {

std::vector<const EventListener*> listeners;

} // namespace

// Where the events come from, for the host's life.
struct EventListener::Sources {
    explicit Sources(Display* display)
        : mainLoop(display, handOut),
          pauses(ConnectionNumber(display), [this] { mainLoop.handlePending(); }) {}

    EventLoopSource mainLoop;
    WorkInPauses pauses;
};

EventListener::Sources& EventListener::sources() {
    static Sources sources(XlibConnection::shared()->display());
    return sources;
}

// A listener may make and destroy others.
void EventListener::handOut(XEvent event) {
    Display* display = XlibConnection::shared()->display();
    const bool hasData = event.type == GenericEvent && XGetEventData(display, &event.xcookie) != False;
    for (const EventListener* listener : std::vector(listeners))
        if (std::ranges::find(listeners, listener) != listeners.end()) listener->listener_(event);
    if (hasData) XFreeEventData(display, &event.xcookie);
}

EventListener::EventListener(std::function<void(const XEvent&)> listener) : listener_(std::move(listener)) {
    sources();
    listeners.push_back(this);
}

EventListener::~EventListener() { listeners.erase(std::ranges::find(listeners, this)); }

void EventListener::handlePending() {
    XSync(XlibConnection::shared()->display(), False);
    sources().mainLoop.handlePending();
}

} // namespace platform::x11
