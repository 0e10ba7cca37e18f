#include "platform/linux/x11/keyboard/hot_key_events.h"

#include "platform/linux/x11/base/connection.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/modifier_keys.h"
#include "platform/main_queue.h"

#include <algorithm>
#include <optional>
#include <ranges>
#include <utility>

namespace platform::x11 {
namespace {

// How often the host looks whether a hot key kept away from other programs has come up.
constexpr Seconds heldKeyInterval{0.02};

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

// Whatever of them another program holds stays with that program.
std::vector<std::unique_ptr<KeyGrab>> grabsWithLess(const KeyGrab& grab) {
    std::vector<std::unique_ptr<KeyGrab>> grabs;
    for (unsigned fewer = grab.modifiers(); fewer != 0;) {
        fewer = (fewer - 1) & grab.modifiers();
        grabs.push_back(std::make_unique<KeyGrab>(grab.key()));
        grabs.back()->grabWhatIsFree(fewer, grab.locks());
    }
    return grabs;
}

// No key repeats as soon as that: its release went to another program.
bool cameUpUnseen(const HotKeyCombination& combination, ::Time time) {
    unsigned delay = 0;
    unsigned interval = 0;
    return combination.letGo &&
           XkbGetAutoRepeatRate(Connection::shared()->display(), XkbUseCoreKbd, &delay, &interval) != False &&
           time - combination.pressedAt < delay;
}

template <class T>
std::vector<std::shared_ptr<T>> living(const std::vector<std::weak_ptr<T>>& all) {
    std::vector<std::shared_ptr<T>> found;
    for (const auto& one : all)
        if (auto alive = one.lock()) found.push_back(std::move(alive));
    return found;
}

} // namespace

HotKeyEvents& HotKeyEvents::shared() {
    static HotKeyEvents events;
    return events;
}

std::vector<std::shared_ptr<HotKeyCombination>> HotKeyEvents::combinations() const {
    return living(combinations_);
}

std::shared_ptr<HotKeyCombination> HotKeyEvents::add(KeyCode key, std::uint32_t modifiers) {
    Connection* connection = Connection::shared();
    const auto map = Keymap::read(coreKeyboard);
    if (connection == nullptr || !map) return nullptr;
    std::erase_if(combinations_, [](const auto& one) { return one.expired(); });
    for (const auto& other : combinations())
        if (other->grab.key() == key && other->modifiers == modifiers) return nullptr;

    if (!events_) {
        // A key that is held repeats as presses only, so that the first one can be told from the others.
        XkbSetDetectableAutoRepeat(connection->display(), True, nullptr);
        XkbSelectEvents(connection->display(), XkbUseCoreKbd, XkbNewKeyboardNotifyMask | XkbMapNotifyMask,
                        XkbNewKeyboardNotifyMask | XkbMapNotifyMask);
        events_ = std::make_unique<EventLoopSource>(connection->display(),
                                                    [this](const XEvent& event) { handle(event); });
    }
    auto combination = std::make_shared<HotKeyCombination>(key, modifiers);
    if (!grabOn(*map, *combination)) return nullptr;
    events_->handlePending(); // presses of an earlier registration are none of this one
    combinations_.push_back(combination);
    return combination;
}

std::shared_ptr<HotKeyHandler> HotKeyEvents::addHandler(HotKeyHandler handler) {
    std::erase_if(handlers_, [](const auto& one) { return one.expired(); });
    auto added = std::make_shared<HotKeyHandler>(std::move(handler));
    handlers_.push_back(added);
    return added;
}

void HotKeyEvents::handle(const XEvent& event) {
    switch (event.type) {
    case KeyPress:
        return pressed(event.xkey);
    case KeyRelease:
        return released(event.xkey);
    case MappingNotify:
        return keyboardChanged();
    default:
        // Of the numbers that extensions have been given, only the keyboard's was asked for.
        if (event.type >= LASTEvent) keyboardChanged();
    }
}

void HotKeyEvents::pressed(const XKeyEvent& event) {
    for (const auto& combination : combinations()) {
        if (!combination->grab.matches(event)) continue;
        const bool isNew = !combination->down || cameUpUnseen(*combination, event.time);
        if (!isNew) continue;
        combination->down = true;
        combination->pressedAt = event.time;
        MainQueue::async([this, pressed = std::weak_ptr(combination)] { run(pressed); });
    }
}

void HotKeyEvents::run(const std::weak_ptr<HotKeyCombination>& combination) {
    if (combination.expired()) return;
    // GTK shows no focused element while the keyboard is the host's.
    letKeyboardGo(KeysDown(Connection::shared()->display()));
    const auto handlers = handlers_; // a handler may install and remove others
    for (const auto& installed : std::views::reverse(handlers)) {
        const auto handler = installed.lock();
        if (handler && (*handler)() == noErr) break;
    }
    watchHeldKey(combination);
}

void HotKeyEvents::released(const XKeyEvent& event) {
    for (const auto& combination : combinations())
        if (event.keycode == combination->grab.key()) combination->down = false;
}

// Another layout may put a modifier, or Num Lock, elsewhere.
void HotKeyEvents::keyboardChanged() {
    const auto map = Keymap::read(coreKeyboard);
    if (!map) return;
    for (const auto& combination : combinations())
        grabOn(*map, *combination);
}

void HotKeyEvents::keystrokeComes(const KeysDown& keys) {
    if (!events_) return;
    letKeyboardGo(keys);
    for (const auto& combination : combinations())
        combination->grab.pause();
}

void HotKeyEvents::letKeyboardGo(const KeysDown& keys) {
    for (const auto& combination : combinations()) {
        if (!combination->down || !keys.has(combination->grab.key())) continue;
        combination->letGo = true;
        if (combination->lesser.empty()) combination->lesser = grabsWithLess(combination->grab);
    }
    XUngrabKeyboard(Connection::shared()->display(), CurrentTime);
}

void HotKeyEvents::keystrokeDone() {
    if (!events_) return;
    for (const auto& combination : combinations())
        combination->grab.resume();
    events_->handlePending(); // repeats from before the keystroke
    for (const auto& combination : combinations()) {
        if (!combination->letGo) continue;
        // It repeats without modifiers now, so that with them it has been pressed anew.
        if (!combination->grab.isBare()) combination->down = false;
        watchHeldKey(combination);
    }
}

void HotKeyEvents::watchHeldKey(const std::weak_ptr<HotKeyCombination>& combination) {
    const auto held = combination.lock();
    if (!held || !held->letGo) return;
    if (KeysDown(Connection::shared()->display()).has(held->grab.key()))
        return MainQueue::asyncAfter(heldKeyInterval, [this, combination] { watchHeldKey(combination); });
    held->letGo = held->down = false;
    held->lesser.clear();
}

} // namespace platform::x11
