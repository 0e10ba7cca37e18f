// The keyboard on the user's desk, as the X server sees it: not the device that synthetic keystrokes come
// from.
#pragma once

#include "platform/event.h"

#include <memory>
#include <vector>

namespace conformance {

class X11Keyboard {
public:
    X11Keyboard();
    // Lets everything go that is still down.
    ~X11Keyboard();
    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;

    void hold(platform::CGEventFlags modifiers);
    void releaseAll();
    void tap(platform::CGKeyCode keyCode);

    // A combination grabbed by a program of its own, until the handle goes.
    static std::shared_ptr<void> grab(platform::CGKeyCode keyCode, std::uint32_t hotKeyModifiers);

private:
    struct Device;
    void fake(unsigned char key, bool down);

    std::unique_ptr<Device> device_;
    std::vector<unsigned char> down_;
};

} // namespace conformance
