#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

// System-wide hot keys. Main thread only; presses arrive on the main thread, through the main queue's order.
namespace platform {

using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;

// Modifier bits of a hot key's mask. Command, Option, Control and Shift are the keys of those names.
inline constexpr std::uint32_t cmdKey = 0x0100;
inline constexpr std::uint32_t shiftKey = 0x0200;
inline constexpr std::uint32_t optionKey = 0x0800;
inline constexpr std::uint32_t controlKey = 0x1000;

inline constexpr std::uint32_t kEventClassKeyboard = 0x6B657962; // 'keyb'
inline constexpr std::uint32_t kEventHotKeyPressed = 5;

struct EventTypeSpec {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;
};

struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
};

// Whose events a handler sees; the application's are the only ones there are.
enum class EventTargetRef { application };
EventTargetRef GetApplicationEventTarget();

// An installed handler. Destroying it removes the handler (`RemoveEventHandler`).
class EventHandler {
public:
    virtual ~EventHandler() = default;
};
using EventHandlerRef = std::unique_ptr<EventHandler>;

// Installs a handler for one type of event. Null when the desktop refuses.
EventHandlerRef InstallEventHandler(EventTargetRef target, std::function<OSStatus()> handler,
                                    EventTypeSpec type);

// A registered combination. Destroying it gives the combination back (`UnregisterEventHotKey`).
class EventHotKey {
public:
    virtual ~EventHotKey() = default;
};
using EventHotKeyRef = std::unique_ptr<EventHotKey>;

// Registers a key (by position, see `CGKeyCode`) with a modifier mask; a press anywhere runs the target's
// handlers. Null when the combination cannot be had, for instance because another program holds it.
EventHotKeyRef RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                                   EventTargetRef target, std::uint32_t options);

} // namespace platform
