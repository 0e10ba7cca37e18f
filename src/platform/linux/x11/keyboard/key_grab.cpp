#include "platform/linux/x11/keyboard/key_grab.h"

#include "platform/linux/x11/base/connection.h"

namespace platform::x11 {
namespace {

constexpr unsigned allModifiers =
    ShiftMask | LockMask | ControlMask | Mod1Mask | Mod2Mask | Mod3Mask | Mod4Mask | Mod5Mask;

} // namespace

// A grab matches its modifiers exactly, so there is one for every combination of the locks.
void KeyGrab::request(bool grab) const {
    Connection& connection = *Connection::shared();
    for (unsigned locks = locks_;; locks = (locks - 1) & locks_) {
        const unsigned modifiers = modifiers_ | locks;
        if (grab)
            XGrabKey(connection.display(), key_, modifiers, connection.root(), False, GrabModeAsync,
                     GrabModeAsync);
        else
            XUngrabKey(connection.display(), key_, modifiers, connection.root());
        if (locks == 0) break;
    }
}

bool KeyGrab::grab(unsigned modifiers, unsigned locks) {
    Connection* connection = Connection::shared();
    if (connection == nullptr) return false;
    release();
    modifiers_ = modifiers;
    locks_ = locks & ~modifiers;
    held_ = connection->succeeds([this] { request(true); });
    if (!held_) connection->succeeds([this] { request(false); });
    return held_;
}

void KeyGrab::grabWhatIsFree(unsigned modifiers, unsigned locks) {
    if (Connection::shared() == nullptr) return;
    modifiers_ = modifiers;
    locks_ = locks & ~modifiers;
    held_ = true;
    request(true);
}

void KeyGrab::release() {
    Connection* connection = Connection::shared();
    if (!held_ || connection == nullptr) return;
    held_ = false;
    request(false);
    XSync(connection->display(), False); // another program may have it as soon as this returns
}

void KeyGrab::pause() const {
    if (held_) request(false);
}

void KeyGrab::resume() const {
    if (held_) request(true);
}

bool KeyGrab::matches(const XKeyEvent& event) const {
    return held_ && event.keycode == key_ && (event.state & allModifiers & ~locks_) == modifiers_;
}

} // namespace platform::x11
