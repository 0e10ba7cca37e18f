#pragma once

// clang-format off: Xlib's macros break what comes after them.
#include <gmock/gmock.h>
// clang-format on

#include "linux/run_until.h"
#include "platform/event.h"
#include "rig/keyboard.h"

#include <X11/Xlib.h>
#include <sys/types.h>

#include <string>
#include <vector>

// The other side of the X server: small programs with a window. Each talks to the server over a connection of
// its own, as it would in another process.
namespace platform::x11test {

using rig::Keyboard;

// A window that has the focus and writes down every key press: "Control+c", with the symbol in the group
// that was in effect, or "Alt_L" for a modifier key alone.
class KeyWindow {
public:
    explicit KeyWindow(const char* windowClass = "editor");
    ~KeyWindow();
    KeyWindow(const KeyWindow&) = delete;
    KeyWindow& operator=(const KeyWindow&) = delete;

    // The presses so far other than those of modifier keys.
    const std::vector<std::string>& presses();
    // As the server names it where the key's own group has no Latin letter: the one of the first group that
    // has.
    const std::vector<std::string>& latinPresses();

private:
    void read();

    Display* display_;
    ::Window window_;
    std::vector<std::string> presses_;
    std::vector<std::string> latinPresses_;
};

// A process of its own with one window, until the object goes.
class Program {
public:
    Program(const char* windowClass, const char* title);
    ~Program() { end(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void end();
    pid_t process() const { return process_; }

private:
    pid_t process_;
};

// Posts one key press and its release, as the host does.
void post(CGKeyCode key, CGEventFlags flags);

// Runs a program and waits for it; true when it answers 0.
bool run(const std::string& command);

} // namespace platform::x11test
