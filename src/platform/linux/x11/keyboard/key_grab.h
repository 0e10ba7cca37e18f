#pragma once

#include "platform/linux/x11/keyboard/keymap.h"

#include <X11/Xlib.h>

namespace platform::x11 {

// One key with modifiers, grabbed everywhere: the server sends it to the host alone. Destroying it ends the
// grab. Caps Lock and Num Lock do not matter.
class KeyGrab {
public:
    // What becomes of the keys after a press of it, as long as its key is down: the host gets them, or the
    // server keeps them until the host has said who gets the press (XAllowEvents).
    enum class Following { toHost, wait };

    // Nothing is grabbed yet.
    explicit KeyGrab(KeyCode key, Following following = Following::toHost)
        : key_(key), following_(following) {}
    ~KeyGrab() { release(); }
    KeyGrab(const KeyGrab&) = delete;
    KeyGrab& operator=(const KeyGrab&) = delete;

    // False, with nothing grabbed, when another program holds the combination.
    bool grab(unsigned modifiers, unsigned locks);
    // Grabs without asking the server, which leaves with another program whatever that one holds.
    void grabWhatIsFree(unsigned modifiers, unsigned locks);
    void release();
    // Ends the grab for the time being, and begins it again. Neither waits for the server.
    void pause() const;
    void resume() const;

    KeyCode key() const { return key_; }
    unsigned modifiers() const { return modifiers_; }
    unsigned locks() const { return locks_; }
    // True for a press of this combination.
    bool matches(const XKeyEvent& event) const;
    // True when it is grabbed with exactly these.
    bool holds(unsigned modifiers, unsigned locks) const {
        return held_ && modifiers_ == modifiers && locks_ == locks;
    }

private:
    void request(bool grab) const;

    KeyCode key_;
    Following following_;
    unsigned modifiers_ = 0;
    unsigned locks_ = 0;
    bool held_ = false;
};

} // namespace platform::x11
