#pragma once

// clang-format off: Xlib's macros break what comes after them.
#include <gmock/gmock.h>
// clang-format on

#include "linux/run_until.h"
#include "rig/keyboard.h"
#include "support/keys.h"

#include <X11/Xlib.h>

#include <string>
#include <vector>

// The other side of the X server: small programs with a window. Each talks to the server over a connection of
// its own, as it would in another process.
namespace platform::x11test {

using rig::Keyboard;

// Both of the window's names for its kind.
void setWindowClass(Display* display, ::Window window, std::string name);

// A window of this process that has the focus, as the host has seen, and writes down every key press other
// than those of modifier keys: "Control+c", with the symbol in the group that was in effect, or of the first
// group that has a Latin letter there.
class KeyWindow {
public:
    explicit KeyWindow(const char* windowClass = "editor");
    ~KeyWindow();
    KeyWindow(const KeyWindow&) = delete;
    KeyWindow& operator=(const KeyWindow&) = delete;

    void takeFocus();
    const std::vector<std::string>& presses();

private:
    Display* display_;
    ::Window window_;
    std::vector<std::string> presses_;
};

// Runs a program and waits for it; true when it answers 0.
bool run(const std::string& command);

} // namespace platform::x11test
