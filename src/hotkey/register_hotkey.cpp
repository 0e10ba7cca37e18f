// The hot key of the desktop bridge: which combination is registered, and what a press does.
#include "desktop/desktop_bridge.h"

// At most one combination is registered at any time: the old one is unregistered first, and registered again
// when the new one is refused.
bool DesktopBridge::registerHotkey(std::uint32_t key, std::uint32_t modifiers) {
    const HotKeySpec wanted{key, modifiers};
    if (hotkey_ && hotkeySpec_ == wanted) return true;

    const auto previous = hotkeySpec_;
    hotkey_.reset();
    hotkeySpec_.reset();
    if (createHotkey(wanted)) return true;
    if (previous) createHotkey(*previous);
    return false;
}

bool DesktopBridge::createHotkey(const HotKeySpec& spec) {
    auto press = [bridge = weak_from_this()] {
        if (const auto alive = bridge.lock()) alive->capture();
    };
    hotkey_ = HotKey::create(spec.key, spec.modifiers, press);
    if (!hotkey_) return false;
    hotkeySpec_ = spec;
    return true;
}
