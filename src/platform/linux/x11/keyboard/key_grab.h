#pragma once

#include "platform/linux/x11/keyboard/keymap.h"

#include <X11/Xlib.h>

namespace platform::x11 {

// One key with modifiers, grabbed everywhere: the server sends it to the host alone. Destroying it lets it
// go. Caps Lock and Num Lock do not matter.
class KeyGrab {
public:
    // Nothing is grabbed yet.
    explicit KeyGrab(KeyCode key) : key_(key) {}
    ~KeyGrab() { release(); }
    KeyGrab(const KeyGrab&) = delete;
    KeyGrab& operator=(const KeyGrab&) = delete;

    // False, with nothing grabbed, when another program holds the combination.
    bool grab(unsigned modifiers, unsigned locks);
    // Without asking: whatever of it another program holds stays with that program.
    void grabWhatIsFree(unsigned modifiers, unsigned locks);
    void release();
    // Lets go for a moment. Neither waits for the server.
    void pause() const;
    void resume() const;

    KeyCode key() const { return key_; }
    unsigned modifiers() const { return modifiers_; }
    unsigned locks() const { return locks_; }
    // The key alone.
    bool isBare() const { return modifiers_ == 0; }
    // True for a press of this combination.
    bool matches(const XKeyEvent& event) const;
    // True when it is grabbed just like that.
    bool holds(unsigned modifiers, unsigned locks) const {
        return held_ && modifiers_ == modifiers && locks_ == locks;
    }

private:
    void request(bool grab) const;

    KeyCode key_;
    unsigned modifiers_ = 0;
    unsigned locks_ = 0;
    bool held_ = false;
};

} // namespace platform::x11
