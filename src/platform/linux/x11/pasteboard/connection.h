#pragma once

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

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;
using Event = Reply<xcb_generic_event_t>;

// A property's value, its bytes as the server keeps them.
struct Property {
    xcb_atom_t type = XCB_NONE;
    std::uint8_t format = 8;
    std::vector<std::uint8_t> bytes;
};

// The pasteboard's own connection to the X server, with the unmapped window that owns and asks. One thread
// only. XCB, because Xlib has one error handler for the whole process: here an error, such as that of a
// window that has gone, is an event like others, and a lost server is a flag.
class Connection {
public:
    // Null when there is no server, or one without the XFIXES extension.
    static std::unique_ptr<Connection> open();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    xcb_connection_t* xcb() const { return connection_; }
    xcb_window_t window() const { return window_; }
    int descriptor() const { return xcb_get_file_descriptor(connection_); }
    bool lost() const { return xcb_connection_has_error(connection_) != 0; }

    // Names and numbers of atoms; each asked once.
    xcb_atom_t atom(const std::string& name) { return atoms({&name, 1}).front(); }
    std::vector<xcb_atom_t> atoms(std::span<const std::string> names);
    // Empty for a number that names nothing.
    std::vector<std::string> names(std::span<const xcb_atom_t> atoms);

    // The next event that has arrived, in the server's order; null when there is none.
    Event next();

    // Returns when every event that the server has sent so far has arrived.
    void synchronize();

    // The server's clock, in milliseconds.
    xcb_timestamp_t time();

    xcb_window_t ownerOf(xcb_atom_t selection);

    // Reads a property of the own window and deletes it; absent when there is none.
    std::optional<Property> take(xcb_atom_t property);

    // True for the notice that CLIPBOARD has changed hands.
    bool isHandover(const xcb_generic_event_t& event) const;

private:
    explicit Connection(xcb_connection_t* connection) : connection_(connection) {}
    bool prepare(int screen);

    xcb_connection_t* connection_;
    xcb_window_t window_ = XCB_NONE;
    std::uint8_t handoverType_ = 0;
    std::deque<Event> waiting_;
    std::map<std::string, xcb_atom_t> atoms_;
    std::map<xcb_atom_t, std::string> names_;
};

} // namespace platform::selection
