#include "platform/linux/x11/keyboard/key_grab.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/keyboard/keyboards.h"

#include <X11/extensions/XInput2.h>

#include <array>
#include <vector>

namespace platform::x11 {
namespace {

constexpr unsigned allModifiers =
    ShiftMask | LockMask | ControlMask | Mod1Mask | Mod2Mask | Mod3Mask | Mod4Mask | Mod5Mask;

// A grab matches its modifiers exactly, so there is one for each combination of the locks.
std::vector<unsigned> withEveryLock(unsigned modifiers, unsigned locks) {
    std::vector<unsigned> all;
    for (unsigned some = locks;; some = (some - 1) & locks) {
        all.push_back(modifiers | some);
        if (some == 0) return all;
    }
}

// The server does not compare grabs of the core protocol with those of XInput 2, and the latter get the key
// (GNOME Shell's are). So the same grab is tried there for a moment.
bool isGrabbedThroughXInput(XlibConnection& connection, KeyCode key, const std::vector<unsigned>& modifiers) {
    if (!xInputOpcode()) return false;
    std::array<unsigned char, XIMaskLen(XI_KeyPress)> mask{};
    XISetMask(mask.data(), XI_KeyPress);
    XIEventMask events{XIAllDevices, int{mask.size()}, mask.data()};
    std::vector<XIGrabModifiers> wanted;
    for (const unsigned one : modifiers)
        wanted.push_back({static_cast<int>(one), 0});
    const auto count = static_cast<int>(wanted.size());
    const int refused = XIGrabKeycode(connection.display(), XIAllDevices, key, connection.root(),
                                      XIGrabModeAsync, XIGrabModeAsync, False, &events, count, wanted.data());
    XIUngrabKeycode(connection.display(), XIAllDevices, key, connection.root(), count, wanted.data());
    return refused != 0;
}

} // namespace

void KeyGrab::request(bool grab) const {
    XlibConnection& connection = *XlibConnection::shared();
    const int mode = following_ == Following::toHost ? GrabModeAsync : GrabModeSync;
    for (const unsigned modifiers : withEveryLock(modifiers_, locks_)) {
        if (grab)
            XGrabKey(connection.display(), key_, modifiers, connection.root(), False, GrabModeAsync, mode);
        else
            XUngrabKey(connection.display(), key_, modifiers, connection.root());
    }
}

bool KeyGrab::grab(unsigned modifiers, unsigned locks) {
    XlibConnection* connection = XlibConnection::shared();
    if (connection == nullptr) return false;
    release();
    modifiers_ = modifiers;
    locks_ = locks & ~modifiers;
    held_ = connection->succeeds([this] { request(true); }) &&
            !isGrabbedThroughXInput(*connection, key_, withEveryLock(modifiers_, locks_));
    if (!held_) connection->succeeds([this] { request(false); });
    return held_;
}

void KeyGrab::grabWhatIsFree(unsigned modifiers, unsigned locks) {
    if (XlibConnection::shared() == nullptr) return;
    modifiers_ = modifiers;
    locks_ = locks & ~modifiers;
    held_ = true;
    request(true);
}

void KeyGrab::release() {
    XlibConnection* connection = XlibConnection::shared();
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
