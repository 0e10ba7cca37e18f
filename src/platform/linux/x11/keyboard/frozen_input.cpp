#include "platform/linux/x11/keyboard/frozen_input.h"

#include "platform/linux/x11/base/xlib_connection.h"

#include <X11/Xlib.h>
#include <X11/extensions/sync.h>
#include <xcb/sync.h>

#include <algorithm>
#include <array>
#include <cstdlib>
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

FrozenInput::FrozenInput()
    : connection_(xcb_connect(DisplayString(XlibConnection::shared()->display()), nullptr)),
      clock_(static_cast<std::uint32_t>(serverClock())) {
    if (clock_ == XCB_NONE || xcb_connection_has_error(connection_.get()) != 0) return;
    ended_ = xcb_generate_id(connection_.get());
    xcb_sync_create_counter(connection_.get(), ended_, {0, 0});
    // The counter must be there when the other connection raises it.
    const auto version =
        xcb_sync_initialize(connection_.get(), XCB_SYNC_MAJOR_VERSION, XCB_SYNC_MINOR_VERSION);
    const Handle<xcb_sync_initialize_reply_t, &std::free> reply(
        xcb_sync_initialize_reply(connection_.get(), version, nullptr));
}

FrozenInput::~FrozenInput() {
    if (ended_ == XCB_NONE) return;
    XSyncValue one;
    XSyncIntToValue(&one, 1);
    XSyncSetCounter(XlibConnection::shared()->display(), ended_, one);
    // Until the server has it: it does not see that the connection is closed while it waits for the counter.
    XSync(XlibConnection::shared()->display(), False);
}

// All is sent together: the server has the request that ends the grab before it begins.
void FrozenInput::begin(std::chrono::milliseconds longest) {
    if (ended_ == XCB_NONE) return;
    xcb_connection_t* connection = connection_.get();
    // A grab of the pointer stops the keyboard as well. One of the keyboard would take the focus from the
    // program in front.
    const auto root = static_cast<xcb_window_t>(XlibConnection::shared()->root());
    grab_ = xcb_grab_pointer(connection, 0, root, 0, XCB_GRAB_MODE_SYNC, XCB_GRAB_MODE_SYNC, XCB_NONE,
                             XCB_NONE, XCB_CURRENT_TIME);
    std::array<xcb_sync_waitcondition_t, 2> either{};
    either[0].trigger = {clock_,
                         XCB_SYNC_VALUETYPE_RELATIVE,
                         {0, static_cast<std::uint32_t>(longest.count())},
                         XCB_SYNC_TESTTYPE_POSITIVE_COMPARISON};
    either[1].trigger = {ended_, XCB_SYNC_VALUETYPE_ABSOLUTE, {0, 1}, XCB_SYNC_TESTTYPE_POSITIVE_COMPARISON};
    xcb_sync_await(connection, either.size(), either.data());
    xcb_ungrab_pointer(connection, XCB_CURRENT_TIME);
    xcb_flush(connection);
}

void FrozenInput::awaitBegun() {
    if (!grab_) return;
    const Handle<xcb_grab_pointer_reply_t, &std::free> reply(
        xcb_grab_pointer_reply(connection_.get(), *grab_, nullptr));
    grab_.reset();
}

} // namespace platform::x11
