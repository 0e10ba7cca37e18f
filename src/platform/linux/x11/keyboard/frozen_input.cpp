#include "platform/linux/x11/keyboard/frozen_input.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <X11/extensions/sync.h>
#include <xcb/sync.h>

#include <algorithm>
#include <span>
#include <string_view>

namespace platform::x11 {
namespace {

// The server's clock, in milliseconds, as a counter that requests can wait for. None without the extension.
XSyncCounter serverClock() {
    Display* display = XlibConnection::shared()->display();
    int ignored = 0;
    if (!XSyncQueryExtension(display, &ignored, &ignored) || !XSyncInitialize(display, &ignored, &ignored))
        return None;
    int count = 0;
    const Handle<XSyncSystemCounter, &XSyncFreeSystemCounterList> first(
        XSyncListSystemCounters(display, &count));
    const std::span counters(first.get(), static_cast<std::size_t>(count));
    const auto clock = std::ranges::find_if(
        counters, [](const auto& counter) { return std::string_view(counter.name) == "SERVERTIME"; });
    return clock == counters.end() ? None : clock->counter;
}

} // namespace

FrozenInput::FrozenInput() : clock_(static_cast<std::uint32_t>(serverClock())) {}

// XCB, because XGrabPointer() waits for the reply. Here all is sent together: the server has the request that
// ends the grab before it begins.
void FrozenInput::begin(std::chrono::milliseconds time) const {
    if (clock_ == XCB_NONE) return;
    xcb_connection_t* connection = XGetXCBConnection(XlibConnection::shared()->display());
    // A grab of the pointer stops the keyboard as well. One of the keyboard would take the focus from the
    // program in front.
    const auto root = static_cast<xcb_window_t>(XlibConnection::shared()->root());
    const auto grab = xcb_grab_pointer(connection, 0, root, 0, XCB_GRAB_MODE_SYNC, XCB_GRAB_MODE_SYNC,
                                       XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    xcb_discard_reply(connection, grab.sequence);
    xcb_sync_waitcondition_t passed{};
    passed.trigger.counter = clock_;
    passed.trigger.wait_type = XCB_SYNC_VALUETYPE_RELATIVE;
    passed.trigger.wait_value = {0, static_cast<std::uint32_t>(time.count())};
    passed.trigger.test_type = XCB_SYNC_TESTTYPE_POSITIVE_COMPARISON;
    xcb_sync_await(connection, 1, &passed);
    xcb_ungrab_pointer(connection, XCB_CURRENT_TIME);
    xcb_flush(connection);
}

} // namespace platform::x11
