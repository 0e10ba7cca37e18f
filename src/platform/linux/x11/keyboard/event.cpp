#include "platform/event.h"

#include "platform/linux/x11/base/connection.h"
#include "platform/linux/x11/keyboard/held_modifiers.h"
#include "platform/linux/x11/keyboard/hot_key_events.h"
#include "platform/linux/x11/keyboard/key_positions.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/keys_down.h"
#include "platform/linux/x11/keyboard/keystroke.h"
#include "platform/linux/x11/windows/front_window.h"
#include "platform/linux/x11/windows/terminals.h"
#include "platform/linux/x11/windows/window_class.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <utility>

namespace platform {
namespace {

using x11::Keystroke;

bool takesSyntheticEvents() {
    x11::Connection* connection = x11::Connection::shared();
    int ignored = 0;
    static const bool takes =
        connection != nullptr &&
        XTestQueryExtension(connection->display(), &ignored, &ignored, &ignored, &ignored) != False;
    return takes;
}

// One synthetic key press and its release.
class Typist {
public:
    explicit Typist(Display* display) : display_(display) {}

    void keyDown(const KeyboardEvent& event) {
        keyUp(); // of an earlier one that never came up
        const auto map = x11::Keymap::read(x11::syntheticKeyboard());
        if (!map || goesToTerminal(event) || !x11::isStillInFront()) return;
        const x11::KeysDown held(display_);
        XkbGetState(display_, XkbUseCoreKbd, &before_);
        const auto latin = map->latinGroup(before_.group);
        const auto keystrokes = x11::keystrokesFor(event, *map, latin.has_value());
        if (keystrokes.empty()) return; // nothing to release or lock for, and no key-up to undo it
        // From here on without waiting for an answer: what the user types meanwhile comes before or after.
        releaseModifiers(*map, held);
        unlockModifiers(map->lockMask());
        if (latin) chooseGroup(*map, *latin, event.keyCode);
        x11::HotKeyEvents::shared().keystrokeComes(held);
        for (const Keystroke& keystroke : keystrokes) {
            release(std::exchange(down_, keystroke));
            for (const KeyCode key : down_)
                fake(key, true);
        }
        XFlush(display_);
    }

    void keyUp() {
        if (down_.empty()) return;
        release(std::exchange(down_, {}));
        if (const unsigned locked = std::exchange(unlocked_, 0))
            XkbLockModifiers(display_, XkbUseCoreKbd, locked, locked);
        if (std::exchange(otherGroup_, false))
            XkbLockGroup(display_, XkbUseCoreKbd, static_cast<unsigned>(before_.locked_group));
        XSync(display_, False);
        x11::HotKeyEvents::shared().keystrokeDone();
    }

private:
    static bool goesToTerminal(const KeyboardEvent& event) {
        if ((event.flags & kCGEventFlagMaskCommand) == 0) return false;
        return x11::takesNoCopyKeys(x11::programWindow(x11::focusedWindow()));
    }

    void fake(KeyCode key, bool press) {
        XTestFakeKeyEvent(display_, key, press ? True : False, CurrentTime);
    }

    void release(const Keystroke& keys) {
        for (auto key = keys.rbegin(); key != keys.rend(); ++key)
            fake(*key, false);
    }

    // Programs no longer see what the user holds. Nothing is pressed again afterwards: the user's own
    // release would not reach the synthetic keyboard, and the modifier would stay.
    void releaseModifiers(const x11::Keymap& map, const x11::KeysDown& held) {
        const unsigned locks = map.lockMask();
        for (unsigned key = map.firstKey(); key <= map.lastKey(); ++key) {
            const unsigned modifiers = map.modifiersOf(static_cast<KeyCode>(key));
            if (held.has(key) && modifiers != 0 && (modifiers & locks) == 0)
                fake(static_cast<KeyCode>(key), false);
        }
    }

    // Sticky keys hold modifiers without a finger on them. Caps Lock and Num Lock change no keystroke.
    void unlockModifiers(unsigned locks) {
        if (const unsigned latched = before_.latched_mods & ~locks)
            XkbLatchModifiers(display_, XkbUseCoreKbd, latched, 0);
        unlocked_ = before_.locked_mods & ~locks;
        if (unlocked_ != 0) XkbLockModifiers(display_, XkbUseCoreKbd, unlocked_, 0);
    }

    // Programs look a letter that is not Latin up in the user's other layouts, but take another ASCII
    // character as it is: the French A is a slash in Hebrew. Only then the layout is switched for the
    // keystroke.
    void chooseGroup(const x11::Keymap& map, unsigned latin, CGKeyCode keyCode) {
        const auto key = x11::xKeyCode(keyCode);
        if (!key) return;
        const KeySym typed = map.symbol(*key, before_.group);
        otherGroup_ = typed > XK_space && typed <= XK_asciitilde && typed != map.symbol(*key, latin);
        if (otherGroup_) XkbLockGroup(display_, XkbUseCoreKbd, latin);
    }

    Display* display_;
    Keystroke down_;
    XkbStateRec before_{};
    unsigned unlocked_ = 0;
    bool otherGroup_ = false;
};

} // namespace

std::optional<EventSource> CGEventSourceCreate(CGEventSourceStateID state) {
    if (!takesSyntheticEvents()) return std::nullopt;
    return EventSource{state};
}

std::optional<KeyboardEvent> CGEventCreateKeyboardEvent(const std::optional<EventSource>&, CGKeyCode keyCode,
                                                        bool keyDown) {
    if (!takesSyntheticEvents() || !x11::xKeyCode(keyCode)) return std::nullopt;
    return KeyboardEvent{keyCode, keyDown, 0};
}

void CGEventSetFlags(KeyboardEvent& event, CGEventFlags flags) { event.flags = flags; }

void CGEventPost(CGEventTapLocation, const KeyboardEvent& event) {
    if (!takesSyntheticEvents()) return;
    static Typist typist(x11::Connection::shared()->display());
    if (event.keyDown) {
        typist.keyDown(event);
    } else {
        typist.keyUp();
    }
}

CGEventFlags Event::modifierFlags() { return x11::heldModifiers(); }

} // namespace platform
