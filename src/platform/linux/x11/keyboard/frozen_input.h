#pragma once

#include "platform/linux/base/handle.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <optional>

namespace platform::x11 {

// Makes programs wait for what people do with keyboards and pointers; then they get all of it, in order. Main
// thread only.
class FrozenInput {
public:
    // Whatever has to be asked is asked here.
    FrozenInput();
    // Ends it.
    ~FrozenInput();
    FrozenInput(const FrozenInput&) = delete;
    FrozenInput& operator=(const FrozenInput&) = delete;

    // From about now on until the object's end, and for this long at most: the X server ends it by itself,
    // whatever becomes of the host. Freezes nothing while a program has grabbed the pointer, for an open menu
    // for instance, or where the server lacks the SYNC extension. Waits for nothing: while the host has
    // grabbed the server it begins when that ends.
    void begin(std::chrono::milliseconds longest);
    // Until it is in force.
    void awaitBegun();

private:
    // Its own, because the server answers nothing on it until it is over.
    Handle<xcb_connection_t, xcb_disconnect> connection_;
    std::uint32_t clock_;
    std::optional<xcb_grab_pointer_cookie_t> grab_; // asked for, and not answered yet
    std::uint32_t ended_ = XCB_NONE; // a counter that the object's end raises; there with the clock
};

} // namespace platform::x11
