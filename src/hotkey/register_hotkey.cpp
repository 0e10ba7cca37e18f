// DesktopBridge's side of the hot key: which combination is live, and what a press does.
#include "desktop/desktop_bridge.h"

// At most one combination is registered at any time, so the old one goes before the new one comes; when the
// new one cannot be had, the old one is taken back.
bool DesktopBridge::registerHotkey(std::uint32_t key, std::uint32_t modifiers) {
    const HotKeySpec wanted{key, modifiers};
    if (hotkey_ && hotkeySpec_ == wanted) return true;

    const auto previous = hotkeySpec_;
    hotkey_.reset();
    hotkeySpec_.reset();
    if (takeHotkey(wanted)) return true;
    if (previous) takeHotkey(*previous);
    return false;
}

bool DesktopBridge::takeHotkey(const HotKeySpec& spec) {
    auto press = [bridge = weak_from_this()] {
        if (const auto alive = bridge.lock()) alive->capture();
    };
    hotkey_ = HotKey::create(spec.key, spec.modifiers, press);
    if (!hotkey_) return false;
    hotkeySpec_ = spec;
    return true;
}
