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

// The window the window manager calls active (`_NET_ACTIVE_WINDOW`), or 0.
::Window activeWindow();

// The window that has the keyboard focus (`XGetInputFocus`), or 0.
::Window focusedWindow();

// The process that owns a window: the one at the other end of its program's connection, else what the window
// claims (`_NET_WM_PID`), which in a sandbox or on another machine is a number of theirs. Absent when
// unknown.
std::optional<pid_t> windowProcess(::Window window);

// The window's title as its program set it (`_NET_WM_NAME`, else `WM_NAME`).
std::optional<std::string> windowTitle(::Window window);

} // namespace platform::x11
