// The keyboard on the desk: a device of its own, not the one that synthetic keystrokes come from. What is
// still down at the end comes up.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

using Display = struct _XDisplay;

namespace testbed {

using KeyCode = unsigned char; // as the X server numbers the keys

class Keyboard {
public:
    Keyboard();
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    // Keys by the names of their symbols, one after the other: "Control+Shift+End", "Alt_R+space". Throws
    // when there is no such key.
    void hold(std::string_view keys);
    void letGo(std::string_view keys);
    void letGoAll();
    // Down in order, up in reverse.
    void press(std::string_view keys);
    // The same with a key by its place.
    void press(KeyCode key);

    // True when the server says that no key is down on any keyboard and no modifier is in effect, apart from
    // the locks.
    bool nothingIsHeld() const;
    ::Display* display() const;

private:
    struct Device;
    std::vector<KeyCode> codes(std::string_view keys) const;
    void fake(KeyCode key, bool down);

    std::unique_ptr<Device> device_;
    std::vector<KeyCode> down_;
};

} // namespace testbed
