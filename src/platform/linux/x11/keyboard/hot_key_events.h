#pragma once

#include "platform/hot_key.h"
#include "platform/linux/x11/base/event_source.h"
#include "platform/linux/x11/keyboard/key_grab.h"
#include "platform/linux/x11/keyboard/keys_down.h"

#include <functional>
#include <memory>
#include <vector>

namespace platform::x11 {

// A registered combination.
struct HotKeyCombination {
    HotKeyCombination(KeyCode key, std::uint32_t wanted) : grab(key), modifiers(wanted) {}

    KeyGrab grab;
    std::vector<std::unique_ptr<KeyGrab>> lesser; // its key with fewer modifiers, while kept from programs
    std::uint32_t modifiers;                      // as registered, whatever keys carry them at the moment
    ::Time pressedAt = 0;
    bool down = false;  // its key, since a press of it
    bool letGo = false; // the keyboard, meanwhile: the key's release comes to somebody else
};

using HotKeyHandler = std::function<OSStatus()>;

// The host's hot keys: what is registered, who handles presses, and the events in between. Main thread only.
class HotKeyEvents {
public:
    static HotKeyEvents& shared();

    // Null when it cannot be had. It stays registered for as long as the caller keeps it.
    std::shared_ptr<HotKeyCombination> add(KeyCode key, std::uint32_t modifiers);

    // A press runs the handler for as long as the caller keeps it.
    std::shared_ptr<HotKeyHandler> addHandler(HotKeyHandler handler);

    // Around a synthetic keystroke, once the held modifiers are released: it may itself be a hot key. `keys`
    // are those down now. Waits for no answer, so that the keystroke can follow in the same breath.
    void keystrokeComes(const KeysDown& keys);
    void keystrokeDone();

private:
    HotKeyEvents() = default;
    void handle(const XEvent& event);
    void pressed(const XKeyEvent& event);
    // As long as the user keeps a hot key down, the server sends every key to the host and takes the focus
    // from the other program. That ends here. The hot key's own key would soon repeat, without its modifiers
    // or some of them, as plain typing into the other program, so it alone is kept away until it comes up.
    void letKeyboardGo(const KeysDown& keys);
    void run(const std::weak_ptr<HotKeyCombination>& combination);
    void released(const XKeyEvent& event);
    void keyboardChanged();
    void watchHeldKey(const std::weak_ptr<HotKeyCombination>& combination);
    std::vector<std::shared_ptr<HotKeyCombination>> combinations() const;

    std::unique_ptr<EventLoopSource> events_;
    std::vector<std::weak_ptr<HotKeyCombination>> combinations_;
    std::vector<std::weak_ptr<HotKeyHandler>> handlers_;
};

} // namespace platform::x11
