#include "platform/linux/x11/keyboard/hot_keys.h"

#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/keyboard/held_modifiers.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/modifier_keys.h"
#include "platform/main_queue.h"

#include <X11/extensions/XTest.h>

#include <algorithm>
#include <utility>

namespace platform::x11 {
namespace {

// A press this long after the last one is no repeat of a key that is held: the server repeats within a
// second.
constexpr ::Time longestRepeatInterval = 1000; // milliseconds

// The X modifiers of a hot key's mask; absent when the keyboard lacks one of them.
std::optional<unsigned> xModifiers(const Keymap& map, std::uint32_t hotKeyModifiers) {
    unsigned modifiers = 0;
    for (const ModifierKey& key : modifierKeys()) {
        if ((hotKeyModifiers & key.hotKeyBit) == 0) continue;
        unsigned mask = 0;
        for (const KeySym& name : key.held)
            if (mask == 0) mask = map.modifierMask({&name, 1});
        if (mask == 0) return std::nullopt;
        modifiers |= mask;
    }
    return modifiers;
}

bool grabOn(const Keymap& map, HotKeyCombination& combination) {
    const auto modifiers = xModifiers(map, combination.modifiers);
    if (!modifiers) return false;
    const unsigned locks = map.lockMask() & ~*modifiers;
    return combination.grab.holds(*modifiers, locks) || combination.grab.grab(*modifiers, locks);
}

// What another program holds of them stays with that program.
std::vector<std::unique_ptr<KeyGrab>> grabsWithLess(const KeyGrab& grab) {
    std::vector<std::unique_ptr<KeyGrab>> grabs;
    for (unsigned fewer = grab.modifiers(); fewer != 0;) {
        fewer = (fewer - 1) & grab.modifiers();
        grabs.push_back(std::make_unique<KeyGrab>(grab.key(), KeyGrab::Following::wait));
        grabs.back()->grabWhatIsFree(fewer, grab.locks());
    }
    return grabs;
}

std::uint32_t hotKeyModifiers(CGEventFlags held) {
    std::uint32_t modifiers = 0;
    for (const ModifierKey& key : modifierKeys())
        if ((held & key.flag) != 0) modifiers |= key.hotKeyBit;
    return modifiers;
}

// What a key holds down of a hot key's modifiers.
std::uint32_t hotKeyModifiersOn(unsigned key) {
    const auto map = Keymap::read(coreKeyboard);
    const unsigned carried = map ? map->modifiersOf(static_cast<KeyCode>(key)) : 0;
    std::uint32_t modifiers = 0;
    for (const ModifierKey& one : modifierKeys())
        if (carried != 0 && (carried & map->modifierMask(one.held)) != 0) modifiers |= one.hotKeyBit;
    return modifiers;
}

// From here on programs get the keys again, which the server sends to the host alone while a hot key is down.
// The hot key's own key counts as released: it does not repeat, and a synthetic keystroke can press it. The
// program in front sees that release, and Qt 5 and 6 therefore do not open a menu when the user lets go of
// Alt.
//
// It comes from the keyboard that the user pressed it on: with a key from another one the layout counts as
// changed, and GTK programs read it anew before they answer anything. RawInput tells of it, and rightly so:
// no repeat comes after it.
void giveKeyboardBack(KeyCode key) {
    Display* display = XlibConnection::shared()->display();
    XUngrabKeyboard(display, CurrentTime); // first: until then the program in front is without the focus
    XDevice keyboard{};
    keyboard.device_id = lastUsedKeyboard();
    if (keyboard.device_id == coreKeyboard)
        XTestFakeKeyEvent(display, key, False, CurrentTime);
    else
        XTestFakeDeviceKeyEvent(display, &keyboard, key, False, nullptr, 0, CurrentTime);
    XFlush(display);
}

template <class T>
std::vector<std::shared_ptr<T>> living(const std::vector<std::weak_ptr<T>>& all) {
    std::vector<std::shared_ptr<T>> found;
    for (const auto& one : all)
        if (auto alive = one.lock()) found.push_back(std::move(alive));
    return found;
}

} // namespace

HotKeys& HotKeys::shared() {
    static HotKeys hotKeys;
    return hotKeys;
}

std::vector<std::shared_ptr<HotKeyCombination>> HotKeys::combinations() const {
    return living(combinations_);
}

std::shared_ptr<HotKeyCombination> HotKeys::add(KeyCode key, std::uint32_t modifiers) {
    XlibConnection* connection = XlibConnection::shared();
    const auto map = Keymap::read(coreKeyboard);
    if (connection == nullptr || !map) return nullptr;
    std::erase_if(combinations_, [](const auto& one) { return one.expired(); });
    for (const auto& other : combinations())
        if (other->grab.key() == key && other->modifiers == modifiers) return nullptr;

    if (!events_) {
        XkbSelectEvents(connection->display(), XkbUseCoreKbd, XkbNewKeyboardNotifyMask | XkbMapNotifyMask,
                        XkbNewKeyboardNotifyMask | XkbMapNotifyMask);
        // Otherwise the server sends a release before each repeat, and a host that is slow to answer a press
        // would take every repeat for a press of its own.
        XkbSetDetectableAutoRepeat(connection->display(), True, nullptr);
        events_.emplace([this](const XEvent& event) { handle(event); });
    }
    auto combination = std::make_shared<HotKeyCombination>(key, modifiers);
    if (!grabOn(*map, *combination)) {
        refused_ = Known{key, modifiers, false};
        return nullptr;
    }
    refused_.reset();
    paused_ = false;
    EventListener::handlePending(); // presses of an earlier registration are not for this one
    combinations_.push_back(combination);
    return combination;
}

bool HotKeys::setPaused(bool paused) {
    if (paused == paused_) return true;
    const auto map = Keymap::read(coreKeyboard);
    if (!map) return false;
    bool heldAll = true;
    for (const auto& combination : combinations()) {
        combination->lesser.clear();
        combination->down = false;
        if (paused)
            combination->grab.release();
        else
            heldAll = grabOn(*map, *combination) && heldAll;
    }
    if (heldAll) paused_ = paused;
    return heldAll;
}

std::optional<HotKeys::Known> HotKeys::known() const {
    const auto all = combinations();
    if (all.empty()) return refused_;
    return Known{all.back()->grab.key(), all.back()->modifiers, true};
}

std::shared_ptr<HotKeyHandler> HotKeys::addHandler(HotKeyHandler handler) {
    std::erase_if(handlers_, [](const auto& one) { return one.expired(); });
    auto added = std::make_shared<HotKeyHandler>(std::move(handler));
    handlers_.push_back(added);
    return added;
}

void HotKeys::handle(const XEvent& event) {
    switch (event.type) {
    case KeyPress:
        return pressed(event.xkey);
    case KeyRelease:
        return keyUp(event.xkey.keycode, true);
    case MappingNotify:
        return keyboardChanged();
    default:
        // Of the event numbers that extensions have, only those of XKB were asked for.
        if (event.type >= LASTEvent) keyboardChanged();
    }
}

void HotKeys::pressed(const XKeyEvent& event) {
    for (const auto& combination : combinations()) {
        if (combination->grab.matches(event)) return count(combination, event.time);
        for (const auto& lesser : combination->lesser)
            if (lesser->matches(event)) return pressedWithLess(combination, event);
    }
    XAllowEvents(event.display, ReplayKeyboard, event.time); // the grab has ended since
}

// Programs, and the server with its grabs, take the modifiers for released; the real keyboards know better. A
// person may have let go of them since the press.
void HotKeys::pressedWithLess(const std::shared_ptr<HotKeyCombination>& combination, const XKeyEvent& event) {
    const std::uint32_t held = heldAtEvent();
    if (held == combination->modifiers) return count(combination, event.time);
    if ((held & combination->modifiers) != 0) return giveKeyboardBack(combination->grab.key());
    XAllowEvents(event.display, ReplayKeyboard, event.time); // plain typing
    endLesser(*combination);
}

// Unless the person holds modifiers again by now, which a keystroke of the host may have released, too.
void HotKeys::endLesser(HotKeyCombination& combination) {
    if (!combination.lesser.empty() && (hotKeyModifiers(heldModifiers()) & combination.modifiers) == 0)
        combination.lesser.clear();
}

std::uint32_t HotKeys::heldAtEvent() const {
    return xInputOpcode() ? held_ : hotKeyModifiers(heldModifiers());
}

void HotKeys::count(const std::shared_ptr<HotKeyCombination>& combination, ::Time time) {
    const bool isRepeat = combination->down && time - combination->lastPress < longestRepeatInterval;
    combination->lastPress = time;
    combination->down = true;
    watchKeys();
    giveKeyboardBack(combination->grab.key());
    if (!isRepeat) MainQueue::async([this, pressed = std::weak_ptr(combination)] { run(pressed); });
}

void HotKeys::run(const std::weak_ptr<HotKeyCombination>& combination) const {
    if (combination.expired()) return;
    // The newest first; copied, because a handler may install and remove others.
    const std::vector handlers(handlers_.rbegin(), handlers_.rend());
    for (const auto& installed : handlers) {
        const auto handler = installed.lock();
        if (handler && (*handler)() == noErr) return;
    }
}

// Once a person has let go of the modifiers, the key with fewer of them is a program's again. A release may
// be one of the host's own keystroke, which reaches it late if a press of the hot key held the keyboard up at
// that moment: it lets go of nothing that a person holds.
void HotKeys::keyUp(unsigned key, bool mayBeOwn) {
    const auto all = combinations();
    for (const auto& combination : all)
        if (key == combination->grab.key()) combination->down = false;
    if (std::ranges::any_of(all, [](const auto& one) { return !one->lesser.empty(); })) {
        const std::uint32_t stillHeld = mayBeOwn ? hotKeyModifiers(heldModifiers()) : 0;
        held_ &= ~hotKeyModifiersOn(key) | stillHeld;
        const std::uint32_t held = heldAtEvent();
        for (const auto& combination : all)
            if ((held & combination->modifiers) == 0) endLesser(*combination);
    }
    MainQueue::async([this] { rest(); });
}

// Another layout may put a modifier, or Num Lock, elsewhere.
void HotKeys::keyboardChanged() const {
    const auto map = Keymap::read(coreKeyboard);
    if (!map || paused_) return;
    for (const auto& combination : combinations())
        grabOn(*map, *combination);
}

HotKeys::Typing::Typing(CGEventFlags held) : held_(held) {
    for (const auto& combination : shared().combinations()) {
        combination->grab.pause();
        for (const auto& lesser : combination->lesser)
            lesser->pause();
    }
}

HotKeys::Typing::~Typing() {
    for (const auto& combination : shared().combinations()) {
        combination->grab.resume();
        for (const auto& lesser : combination->lesser)
            lesser->resume();
    }
    shared().grabWithLess(held_);
}

void HotKeys::grabWithLess(CGEventFlags held) {
    const auto all = combinations();
    if (std::ranges::all_of(all, [](const auto& one) { return one->lesser.empty(); }))
        held_ = hotKeyModifiers(held);
    for (const auto& combination : all) {
        if ((hotKeyModifiers(held) & combination->modifiers) == 0 || !combination->lesser.empty()) continue;
        combination->lesser = grabsWithLess(combination->grab);
        watchKeys();
    }
}

void HotKeys::watchKeys() {
    if (!keys_)
        keys_.emplace([this](RawInput::Kind kind, unsigned key, bool isSynthetic) {
            if (kind == RawInput::Kind::keyDown) held_ |= hotKeyModifiersOn(key);
            if (kind == RawInput::Kind::keyUp) keyUp(key, isSynthetic);
        });
}

void HotKeys::rest() {
    const auto all = combinations();
    if (std::ranges::none_of(all, [](const auto& one) { return one->down || !one->lesser.empty(); }))
        keys_.reset();
}

} // namespace platform::x11
