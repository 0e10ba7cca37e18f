#pragma once

#include <cstdint>
#include <functional>
#include <memory>

// System-wide hot keys. Main thread only: each press is one entry of the main queue.
namespace platform {

// What a handler returns.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;                  // it has handled the event
inline constexpr OSStatus eventNotHandledErr = -9874; // it has not

// The bits of a hot key's modifier mask.
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

// Whose events a handler gets. Only the application has events.
enum class EventTargetRef { application };
EventTargetRef GetApplicationEventTarget();

// An installed handler. Destroying it removes the handler (`RemoveEventHandler`).
class EventHandler {
public:
    virtual ~EventHandler() = default;
};
using EventHandlerRef = std::unique_ptr<EventHandler>;

// Installs a handler for presses of hot keys. Null for every other type of event, and when the desktop
// refuses.
//
// A press runs the handlers that are installed then, the newest first, until one returns `noErr`; after any
// other result the next one runs. A handler that another one removes during the press is left out.
EventHandlerRef InstallEventHandler(EventTargetRef target, std::function<OSStatus()> handler,
                                    EventTypeSpec type);

// A registered combination. Destroying it frees the combination (`UnregisterEventHotKey`); a press whose
// handlers have not run yet is dropped then.
class EventHotKey {
public:
    virtual ~EventHotKey() = default;
};
using EventHotKeyRef = std::unique_ptr<EventHotKey>;

// Registers a key (by position, see `CGKeyCode`) with a modifier mask: a press of it in any program runs the
// handlers, and that program does not get the key. Null when the combination cannot be registered, for
// instance because another program or the host itself has it already.
EventHotKeyRef RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                                   EventTargetRef target, std::uint32_t options);

} // namespace platform
