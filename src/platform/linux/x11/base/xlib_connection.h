#pragma once

#include <X11/Xlib.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// The host's own connection to the X server, apart from the toolkit's. Main thread only. Hot keys, synthetic
// keystrokes and questions about windows all use it, because the server handles the requests of one
// connection in order.
namespace platform::x11 {

class XlibConnection {
public:
    // The one connection, opened at first use and for the host's life. Null when there is no X server.
    static XlibConnection* shared();

    Display* display() const { return display_; }
    ::Window root() const { return root_; }

    // The atom of that name; the server is asked once for each.
    Atom atom(const char* name);

    // Runs `requests`, waits until the server has handled them, and returns true when none of them failed.
    bool succeeds(const std::function<void()>& requests);

    // A property of 32-bit values (windows, atoms, cardinals); empty when absent or of another format.
    std::vector<unsigned long> values(::Window window, Atom property);

    // A property of bytes (text); absent when there is none.
    std::optional<std::string> text(::Window window, Atom property);

private:
    explicit XlibConnection(Display* display);

    Display* display_;
    ::Window root_;
    std::vector<std::pair<std::string, Atom>> atoms_;
};

} // namespace platform::x11
