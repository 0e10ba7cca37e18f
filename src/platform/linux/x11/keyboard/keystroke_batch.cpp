#include "platform/linux/x11/keyboard/keystroke_batch.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/keyboard/held_modifiers.h"
#include "platform/linux/x11/keyboard/hot_keys.h"
#include "platform/linux/x11/keyboard/key_positions.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/keys_down.h"
#include "platform/linux/x11/keyboard/keystroke.h"
#include "platform/linux/x11/keyboard/raw_input.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <optional>

namespace platform::x11 {
namespace {

void fake(Display* display, KeyCode key, bool press) {
    XTestFakeKeyEvent(display, key, press ? True : False, CurrentTime);
}

// Nothing is pressed again afterwards: a person's own release would not reach the synthetic keyboard, and the
// modifier would stay down.
void releaseModifiers(Display* display, const Keymap& map, const KeysDown& down) {
    const unsigned locks = map.lockMask();
    for (unsigned key = map.firstKey(); key <= map.lastKey(); ++key) {
        const unsigned modifiers = map.modifiersOf(static_cast<KeyCode>(key));
        if (down.has(key) && modifiers != 0 && (modifiers & locks) == 0)
            fake(display, static_cast<KeyCode>(key), false);
    }
}

void press(Display* display, const Keystroke& keystroke) {
    for (const KeyCode key : keystroke)
        fake(display, key, true);
    for (auto key = keystroke.rbegin(); key != keystroke.rend(); ++key)
        fake(display, *key, false);
}

// While it lives, no modifier is latched or locked but Caps Lock and Num Lock, which change no keystroke.
// Sticky keys lock and latch modifiers.
class Unlocked {
public:
    Unlocked(Display* display, const XkbStateRec& state, unsigned locks)
        : display_(display), locked_(state.locked_mods & ~locks) {
        if (const unsigned latched = state.latched_mods & ~locks)
            XkbLatchModifiers(display_, XkbUseCoreKbd, latched, 0);
        if (locked_ != 0) XkbLockModifiers(display_, XkbUseCoreKbd, locked_, 0);
    }
    ~Unlocked() {
        if (locked_ != 0) XkbLockModifiers(display_, XkbUseCoreKbd, locked_, locked_);
    }
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;

private:
    Display* display_;
    unsigned locked_;
};

// While it lives, the keyboard is on that layout.
class OnLayout {
public:
    OnLayout(Display* display, const XkbStateRec& state, unsigned group)
        : display_(display), before_(static_cast<unsigned>(state.locked_group)) {
        XkbLockGroup(display_, XkbUseCoreKbd, group);
    }
    ~OnLayout() { XkbLockGroup(display_, XkbUseCoreKbd, before_); }
    OnLayout(const OnLayout&) = delete;
    OnLayout& operator=(const OnLayout&) = delete;

private:
    Display* display_;
    unsigned before_;
};

// Programs look up a letter that is not Latin in the user's other layouts, but take another ASCII character
// as it is: the French A is a slash in Hebrew. Only for such a key the layout is switched.
bool needsLatin(const Keymap& map, const XkbStateRec& state, unsigned latin, const KeyboardEvent& key) {
    const auto code = xKeyCode(key.keyCode);
    if (!code) return false;
    const KeySym typed = map.symbol(*code, state.group);
    return typed > XK_space && typed <= XK_asciitilde && typed != map.symbol(*code, latin);
}

// Empty when the keyboard lacks a key.
std::vector<Keystroke> keystrokesFor(std::span<const KeyboardEvent> keys, const Keymap& map, bool hasLatin) {
    std::vector<Keystroke> all;
    for (const KeyboardEvent& key : keys) {
        const auto keystrokes = keystrokesFor(key, map, hasLatin);
        if (keystrokes.empty()) return {};
        all.insert(all.end(), keystrokes.begin(), keystrokes.end());
    }
    return all;
}

} // namespace

bool canType() {
    XlibConnection* connection = XlibConnection::shared();
    int ignored = 0;
    static const bool can =
        connection != nullptr &&
        XTestQueryExtension(connection->display(), &ignored, &ignored, &ignored, &ignored) != False;
    return can;
}

bool isCopyKeystroke(const KeyboardEvent& key) {
    const auto map = Keymap::read(syntheticKeyboard());
    const auto code = xKeyCode(key.keyCode);
    if (key.flags != kCGEventFlagMaskCommand || !map || !code) return false;
    XkbStateRec state{};
    XkbGetState(XlibConnection::shared()->display(), XkbUseCoreKbd, &state);
    const auto latin = map->latinGroup(state.group);
    return latin ? map->symbol(*code, *latin) == XK_c : key.keyCode == positionOfC;
}

void awaitTyped() { XSync(XlibConnection::shared()->display(), False); }

// What is asked of the server before anything is typed.
struct KeystrokeBatch::Prepared {
    Keymap map;
    // In this order: a modifier that is pressed between the two looks may be held without being released, but
    // not released without being known as held.
    KeysDown down;
    CGEventFlags held;
    XkbStateRec state;
    std::vector<Keystroke> keystrokes;
    std::optional<unsigned> layout; // to switch to
};

KeystrokeBatch::KeystrokeBatch(std::span<const KeyboardEvent> keys) {
    auto map = Keymap::read(syntheticKeyboard());
    if (!map || !canType()) return;
    Display* display = XlibConnection::shared()->display();
    XkbStateRec state{};
    XkbGetState(display, XkbUseCoreKbd, &state);
    auto layout = map->latinGroup(state.group);
    auto keystrokes = keystrokesFor(keys, *map, layout.has_value());
    if (keystrokes.empty()) return;
    if (layout && std::ranges::none_of(
                      keys, [&](const KeyboardEvent& key) { return needsLatin(*map, state, *layout, key); }))
        layout.reset();
    prepared_ = std::make_unique<Prepared>(
        Prepared{std::move(*map), KeysDown(display), heldModifiers(), state, std::move(keystrokes), layout});
}

KeystrokeBatch::~KeystrokeBatch() = default;

void KeystrokeBatch::type() const {
    if (!prepared_) return;
    Display* display = XlibConnection::shared()->display();
    // One batch of requests without waiting for an answer: what a person types comes before or after it.
    const RawInput::Posting posting;
    const HotKeys::Typing typing(prepared_->held);
    releaseModifiers(display, prepared_->map, prepared_->down);
    const Unlocked unlocked(display, prepared_->state, prepared_->map.lockMask());
    std::optional<OnLayout> layout;
    if (prepared_->layout) layout.emplace(display, prepared_->state, *prepared_->layout);
    for (const Keystroke& keystroke : prepared_->keystrokes)
        press(display, keystroke);
}

} // namespace platform::x11
