#pragma once

#include "platform/linux/x11/base/event_listener.h"
#include "platform/linux/x11/instance/request.h"

#include <X11/Xlib.h>

#include <functional>
#include <memory>

namespace platform {

// The one host of this user on this display, for as long as the object lives. The X server knows which
// process that is and forgets it when the process ends, so a killed host leaves nothing behind. Main thread
// only.
class SoleInstance {
public:
    // Called for each request of a later start of the program, also while the host pauses.
    using Handler = std::function<void(InstanceRequest, const InstanceCaller&, InstanceReply)>;

    // Null when another process is the host already, or when there is no display.
    static std::unique_ptr<SoleInstance> take(Handler handler);

    SoleInstance(::Window window, Handler handler);
    ~SoleInstance();
    SoleInstance(const SoleInstance&) = delete;
    SoleInstance& operator=(const SoleInstance&) = delete;

private:
    void handle(const XSelectionRequestEvent& event) const;

    ::Window window_; // owns the selection
    Handler handler_;
    x11::EventListener events_;
};

} // namespace platform
