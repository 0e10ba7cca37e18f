#pragma once

#include "platform/linux/base/handle.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform::selection {

using Clock = std::chrono::steady_clock;

// The most that is read in one answer: what the host can send to its interface in one frame, and more than a
// picture of a 4K screen.
inline constexpr std::size_t mostBytes = std::size_t{64} << 20;

template <class T>
using Reply = Handle<T, &std::free>;
using Event = Reply<xcb_generic_event_t>;

// The value of a window's property. Units of 16 and 32 bits are in the byte order of this machine.
struct Property {
    xcb_atom_t type = XCB_NONE;
    std::uint8_t format = 8; // bits in a unit: 8, 16 or 32
    std::vector<std::uint8_t> bytes;
};

// The pasteboard's own connection to the X server, with windows that are never shown: one that owns the
// selection and others that receive what other owners deliver. One thread only. XCB and not Xlib, because
// Xlib has one error handler for the whole process. Here an error, such as the one about a window that is
// gone, arrives as an event, and a broken connection sets a flag.
class XcbConnection {
public:
    // Null when there is no server, or one without the XFIXES extension.
    static std::unique_ptr<XcbConnection> open();
    ~XcbConnection();
    XcbConnection(const XcbConnection&) = delete;
    XcbConnection& operator=(const XcbConnection&) = delete;

    xcb_connection_t* xcb() const { return connection_; }
    // The window that owns the selection.
    xcb_window_t window() const { return window_; }
    // One more window; it lives as long as the connection. Changes of its properties are events.
    xcb_window_t newWindow();
    int descriptor() const { return xcb_get_file_descriptor(connection_); }
    bool lost() const { return xcb_connection_has_error(connection_) != 0; }

    // The server's numbers for names, and back; each is asked for once.
    xcb_atom_t atom(const std::string& name) { return atoms({&name, 1}).front(); }
    std::vector<xcb_atom_t> atoms(std::span<const std::string> names);
    // The name is empty for a number that is no atom.
    std::vector<std::string> names(std::span<const xcb_atom_t> atoms);

    // The next event that has arrived, in the server's order; null when there is none.
    Event next();

    // Waits until every event that the server has sent so far has arrived.
    void synchronize();

    // The server's clock, in milliseconds.
    xcb_timestamp_t time();

    xcb_window_t ownerOf(xcb_atom_t selection);

    // True when one connection to the server made both windows: the server gives each its own range of
    // numbers.
    bool areOfOneProgram(xcb_window_t one, xcb_window_t other) const;

    // Reads a property of an own window and deletes it. Absent when there is none, or more than `mostBytes`.
    std::optional<Property> take(xcb_window_t window, xcb_atom_t property);

    // True for the event that says that CLIPBOARD has a new owner or none.
    bool isOwnerChange(const xcb_generic_event_t& event) const;

private:
    explicit XcbConnection(xcb_connection_t* connection) : connection_(connection) {}
    bool prepare(int screen);

    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_NONE;
    xcb_window_t window_ = XCB_NONE;
    std::uint8_t ownerChangeType_ = 0;
    std::deque<Event> waiting_; // read by time(), not yet returned by next()
    std::map<std::string, xcb_atom_t> atoms_;
    std::map<xcb_atom_t, std::string> names_;
};

} // namespace platform::selection
