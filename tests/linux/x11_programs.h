#pragma once

// clang-format off: Xlib's macros break what comes after them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
// clang-format on

#include "platform/event.h"

#include <X11/Xlib.h>
#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// The other side of the X server: a person at the keyboard, and small programs with a window. Each talks to
// the server over a connection of its own, as it would in another process.
namespace platform::x11test {

// False where there is no display: the tests that want one are skipped.
bool hasDisplay();

// Runs the main loop until `done` holds; false when that takes more than a few seconds.
bool runUntil(const std::function<bool()>& done);

// Runs the main loop until it has nothing left to do: what was sent so far has been handled then.
void settle();

// Presses keys by the names of their symbols ("Alt_L", "space"). Whatever is still down at the end comes up.
class Person {
public:
    Person();
    ~Person();
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

    void press(const std::string& key) { fake(key, true); }
    void release(const std::string& key) { fake(key, false); }
    void releaseAll();
    void tap(const std::string& key);

    // True when the server says that no key is down and no modifier is in effect, apart from the locks.
    bool nothingIsHeld() const;
    Display* display() const { return display_; }

private:
    void fake(const std::string& key, bool down);

    Display* display_;
    std::vector<KeyCode> down_;
};

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

    Display* display() const { return display_; }
    ::Window window() const { return window_; }

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
