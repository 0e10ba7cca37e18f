#pragma once

#include "platform/event.h"
#include "platform/hot_key.h"
#include "platform/linux/x11/base/event_listener.h"
#include "platform/linux/x11/keyboard/key_grab.h"
#include "platform/linux/x11/keyboard/raw_input.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace platform::x11 {

// A registered combination.
struct HotKeyCombination {
    HotKeyCombination(KeyCode key, std::uint32_t wanted) : grab(key), modifiers(wanted) {}

    KeyGrab grab;
    std::uint32_t modifiers; // as registered, whatever keys carry them at the moment
    // Its key with fewer modifiers: grabbed while a person holds modifiers that programs no longer see,
    // because a synthetic keystroke has released them.
    std::vector<std::unique_ptr<KeyGrab>> lesser;
    bool down = false; // its key, since a press of the combination
    ::Time lastPress = 0;
};

using HotKeyHandler = std::function<OSStatus()>;

// The host's hot keys: what is registered, who handles presses, and the events in between. Main thread only.
class HotKeys {
public:
    static HotKeys& shared();

    // Null when it cannot be had. It stays registered for as long as the caller keeps it.
    std::shared_ptr<HotKeyCombination> add(KeyCode key, std::uint32_t modifiers);

    // While they are paused, presses go to the programs. False when a combination cannot be had again,
    // because another program has taken it; the pause goes on then. A newly added combination ends the pause.
    bool setPaused(bool paused);
    bool isPaused() const { return paused_; }

    // For --check: the combination that is registered, else the last one that could not be had; absent when
    // none was asked for.
    struct Known {
        KeyCode key;
        std::uint32_t modifiers;
        bool isRegistered;
    };
    std::optional<Known> known() const;

    // Presses run the handler for as long as the caller keeps it.
    std::shared_ptr<HotKeyHandler> addHandler(HotKeyHandler handler);

    // Around synthetic keystrokes that release `held`, the modifiers which people hold: none of the
    // keystrokes is taken for a hot key. Waits for no answer of the server.
    class [[nodiscard]] Typing {
    public:
        explicit Typing(CGEventFlags held);
        ~Typing();
        Typing(const Typing&) = delete;
        Typing& operator=(const Typing&) = delete;

    private:
        CGEventFlags held_;
    };

private:
    HotKeys() = default;
    void handle(const XEvent& event);
    void pressed(const XKeyEvent& event);
    void pressedWithLess(const std::shared_ptr<HotKeyCombination>& combination, const XKeyEvent& event);
    std::uint32_t heldAtEvent() const;
    void count(const std::shared_ptr<HotKeyCombination>& combination, ::Time time);
    void run(const std::weak_ptr<HotKeyCombination>& combination) const;
    void keyUp(unsigned key, bool mayBeOwn);
    void keyboardChanged() const;
    void grabWithLess(CGEventFlags held);
    static void endLesser(HotKeyCombination& combination);
    void watchKeys();
    void rest();
    std::vector<std::shared_ptr<HotKeyCombination>> combinations() const;

    bool paused_ = false;
    std::optional<Known> refused_; // and nothing was registered since
    std::optional<EventListener> events_;
    std::optional<RawInput> keys_; // while a hot key is down or grabbed with fewer modifiers
    // What people hold of hot keys' modifiers as of the last event that was handled, while one is grabbed
    // with fewer of them. The server tells only what they hold now.
    std::uint32_t held_ = 0;
    std::vector<std::weak_ptr<HotKeyCombination>> combinations_;
    std::vector<std::weak_ptr<HotKeyHandler>> handlers_; // oldest first
};

} // namespace platform::x11
