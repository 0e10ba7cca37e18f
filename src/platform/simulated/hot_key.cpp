#include "platform/hot_key.h"

#include "platform/simulated/world.h"

#include <algorithm>
#include <string>

namespace simulated {
namespace {

std::string describe(Combination combination) {
    return "hot key " + std::to_string(combination.first) + "+" + std::to_string(combination.second);
}

class InstalledHandler final : public platform::EventHandler {
public:
    ~InstalledHandler() override {
        World* const world = World::currentOrNull();
        if (world == nullptr) return;
        std::erase_if(world->hotKeys.handlers,
                      [this](const HotKeys::Handler& handler) { return handler.owner == this; });
        world->note("hot key handler removed");
    }
};

class RegisteredHotKey final : public platform::EventHotKey {
public:
    ~RegisteredHotKey() override {
        World* const world = World::currentOrNull();
        if (world == nullptr) return;
        std::erase_if(world->hotKeys.registrations, [&](const HotKeys::Registration& registration) {
            if (registration.owner != this) return false;
            world->note(describe(registration.combination) + " unregistered");
            return true;
        });
    }
};

std::uint32_t hotKeyMask(platform::CGEventFlags flags) {
    return (flags & platform::kCGEventFlagMaskCommand ? platform::cmdKey : 0u) |
           (flags & platform::kCGEventFlagMaskShift ? platform::shiftKey : 0u) |
           (flags & platform::kCGEventFlagMaskAlternate ? platform::optionKey : 0u) |
           (flags & platform::kCGEventFlagMaskControl ? platform::controlKey : 0u);
}

void runHandlers(Combination combination) {
    const HotKeys& hotKeys = World::current().hotKeys;
    if (!hotKeys.isRegistered(combination)) return;
    // The newest first; copied, because a handler may install and remove others.
    const std::vector handlers(hotKeys.handlers.rbegin(), hotKeys.handlers.rend());
    for (const HotKeys::Handler& handler : handlers)
        if (hotKeys.isInstalled(handler.owner) && handler.run() == platform::noErr) return;
}

} // namespace

bool HotKeys::isInstalled(const void* handlerOwner) const {
    return std::ranges::find(handlers, handlerOwner, &Handler::owner) != handlers.end();
}
bool HotKeys::isRegistered(Combination combination) const {
    return std::ranges::find(registrations, combination, &Registration::combination) != registrations.end();
}

void World::userPresses(platform::CGKeyCode keyCode, platform::CGEventFlags modifiers) {
    ++keysPressed;
    const platform::CGEventFlags flags = heldModifiers | modifiers;
    const Combination combination{keyCode, hotKeyMask(flags)};
    if (hotKeys.taken.contains(combination)) return;
    if (!hotKeys.isRegistered(combination)) return deliverKeystroke({keyCode, flags});
    note(describe(combination) + " pressed");
    clock.async([combination] { runHandlers(combination); });
}

} // namespace simulated

namespace platform {

using simulated::World;

EventTargetRef GetApplicationEventTarget() { return EventTargetRef::application; }

EventHandlerRef InstallEventHandler(EventTargetRef, std::function<OSStatus()> handler, EventTypeSpec type) {
    simulated::HotKeys& hotKeys = World::current().hotKeys;
    const bool isPress = type.eventClass == kEventClassKeyboard && type.eventKind == kEventHotKeyPressed;
    if (!hotKeys.acceptsHandlers || !isPress) return nullptr;
    auto installed = std::make_unique<simulated::InstalledHandler>();
    hotKeys.handlers.push_back({installed.get(), std::move(handler)});
    return installed;
}

EventHotKeyRef RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                                   EventTargetRef, std::uint32_t options) {
    World& world = World::current();
    const simulated::Combination combination{keyCode, modifiers};
    if (world.hotKeys.taken.contains(combination) || world.hotKeys.isRegistered(combination)) return nullptr;
    auto registered = std::make_unique<simulated::RegisteredHotKey>();
    world.hotKeys.registrations.push_back({registered.get(), combination, id, options});
    world.note(simulated::describe(combination) + " registered");
    return registered;
}

} // namespace platform
