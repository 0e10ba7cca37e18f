#include "platform/linux/x11/base/errors.h"

#include "platform/linux/base/end_hooks.h"

#include <X11/Xlib.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <mutex>
#include <vector>

namespace platform::x11 {
namespace {

struct LastError {
    Display* display = nullptr;
    unsigned long serial = 0;
};

std::mutex mutex;
std::vector<LastError> kept;
std::atomic<XErrorHandler> next = nullptr;

// The caller holds the mutex.
LastError* find(Display* display) {
    for (LastError& error : kept)
        if (error.display == display) return &error;
    return nullptr;
}

int onError(Display* display, XErrorEvent* event) {
    {
        std::lock_guard lock(mutex);
        if (LastError* error = find(display)) {
            error->serial = event->serial;
            return 0;
        }
    }
    // The other handler may call this one in turn: that call does nothing.
    thread_local bool passedOn = false;
    const XErrorHandler handler = next;
    if (handler == nullptr || passedOn) return 0;
    passedOn = true;
    const int result = handler(display, event);
    passedOn = false;
    return result;
}

// Xlib would end the program anyway, and any clean-up that talks to the server would hang or crash.
int onLostConnection(Display*) {
    static std::atomic_flag said = ATOMIC_FLAG_INIT;
    if (!said.test_and_set())
        std::fputs(
            "quillmark-host: the connection to the X server was lost, so the host ends here. Start it again "
            "in a running desktop session.\n",
            stderr);
    runEndHooks();
    ::_exit(1);
}

} // namespace

void keepErrors(Display* display) {
    {
        std::lock_guard lock(mutex);
        if (find(display) == nullptr) kept.push_back({display, 0});
    }
    const XErrorHandler previous = XSetErrorHandler(onError);
    if (previous != onError) {
        next = previous;
        endCleanlyWhenDisplayIsLost();
    }
}

void endCleanlyWhenDisplayIsLost() { XSetIOErrorHandler(onLostConnection); }

bool failedSince(Display* display, unsigned long serial) {
    std::lock_guard lock(mutex);
    const LastError* error = find(display);
    return error != nullptr && error->serial >= serial;
}

} // namespace platform::x11
