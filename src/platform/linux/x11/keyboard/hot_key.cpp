#include "platform/hot_key.h"

#include "platform/linux/x11/keyboard/hot_keys.h"
#include "platform/linux/x11/keyboard/key_positions.h"

#include <utility>

namespace platform {
namespace {

class InstalledHandler : public EventHandler {
public:
    explicit InstalledHandler(std::shared_ptr<x11::HotKeyHandler> handler) : handler_(std::move(handler)) {}

private:
    std::shared_ptr<x11::HotKeyHandler> handler_;
};

class RegisteredHotKey : public EventHotKey {
public:
    explicit RegisteredHotKey(std::shared_ptr<x11::HotKeyCombination> combination)
        : combination_(std::move(combination)) {}

private:
    std::shared_ptr<x11::HotKeyCombination> combination_;
};

} // namespace

EventTargetRef GetApplicationEventTarget() { return EventTargetRef::application; }

EventHandlerRef InstallEventHandler(EventTargetRef, std::function<OSStatus()> handler, EventTypeSpec type) {
    if (type.eventClass != kEventClassKeyboard || type.eventKind != kEventHotKeyPressed || !handler)
        return nullptr;
    return std::make_unique<InstalledHandler>(x11::HotKeys::shared().addHandler(std::move(handler)));
}

EventHotKeyRef RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID,
                                   EventTargetRef, std::uint32_t) {
    // The numbers of keys are small; a large one must not turn into another key's when it is cut.
    const auto key = keyCode <= 0xFFFF ? x11::xKeyCode(static_cast<CGKeyCode>(keyCode)) : std::nullopt;
    if (!key) return nullptr;
    auto combination = x11::HotKeys::shared().add(*key, modifiers);
    if (!combination) return nullptr;
    return std::make_unique<RegisteredHotKey>(std::move(combination));
}

} // namespace platform
