#pragma once

#include <X11/Xlib.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The host's own connection to the X server, apart from the toolkit's. Main thread only. It carries the hot
// key's grab, the synthetic keystrokes, and questions about windows, so that they happen in the order they
// were asked.
namespace platform::x11 {

class Connection {
public:
    // The one connection; opened at first use. Null when there is no X server to talk to.
    static Connection* shared();

    Display* display() const { return display_; }
    ::Window root() const { return root_; }

    // The atom of that name; asked once, then remembered.
    Atom atom(const char* name);

    // Runs `requests`, waits for the server to have done them, and returns true when none of them failed.
    // Errors of this connection inside it never reach the default handler, which would end the program.
    bool succeeds(const std::function<void()>& requests);

    // A property of 32-bit values (windows, atoms, cardinals); empty when absent or of another format.
    std::vector<unsigned long> values(::Window window, Atom property);

    // A property of bytes (text); absent when there is none.
    std::optional<std::string> text(::Window window, Atom property);

private:
    Connection() = default;
    Display* display_ = nullptr;
    ::Window root_ = 0;
    std::vector<std::pair<std::string, Atom>> atoms_;
};

} // namespace platform::x11
