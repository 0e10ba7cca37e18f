#pragma once

#include "platform/keyboard_layout.h"

#include <cstdint>
#include <memory>
#include <optional>

// Synthetic keystrokes, and the modifier keys the user holds. Main thread only.
namespace platform {

// A mask of modifier keys. In a synthetic keystroke the Command flag means the key that makes a program copy
// and paste on this desktop; among the held modifiers every flag is the key of that name.
using CGEventFlags = std::uint64_t;

inline constexpr CGEventFlags kCGEventFlagMaskAlphaShift = 0x10000;
inline constexpr CGEventFlags kCGEventFlagMaskShift = 0x20000;
inline constexpr CGEventFlags kCGEventFlagMaskControl = 0x40000;
inline constexpr CGEventFlags kCGEventFlagMaskAlternate = 0x80000;
inline constexpr CGEventFlags kCGEventFlagMaskCommand = 0x100000;

enum class CGEventSourceStateID : std::int32_t { combinedSessionState = 0, hidSystemState = 1 };
enum class CGEventTapLocation : std::uint32_t { kCGHIDEventTap = 0 };

// Where a synthetic event claims to come from.
struct EventSource {
    CGEventSourceStateID state = CGEventSourceStateID::combinedSessionState;
};

// Absent when the desktop takes no synthetic events.
std::optional<EventSource> CGEventSourceCreate(CGEventSourceStateID state);

// One press or release of a key, with the modifiers that travel with it.
struct KeyboardEvent {
    CGKeyCode keyCode = 0;
    bool keyDown = false;
    CGEventFlags flags = 0;
};

// Absent when the desktop has no such key. The source may be absent.
std::optional<KeyboardEvent> CGEventCreateKeyboardEvent(const std::optional<EventSource>& source,
                                                        CGKeyCode keyCode, bool keyDown);

// Replaces the event's modifiers.
void CGEventSetFlags(KeyboardEvent& event, CGEventFlags flags);

// Posts the event to the program that has the focus. That program sees exactly the event's own modifiers,
// whatever the user holds at this moment, and no modifier stays pressed after the key-up event. A keystroke
// that would not copy or paste there but do harm (Command keys in a terminal) is withheld, and so is one that
// would reach another window than the one last known to be in front.
void CGEventPost(CGEventTapLocation tap, const KeyboardEvent& event);

class Event {
public:
    // The modifier keys held at this moment, locks included.
    static CGEventFlags modifierFlags();
};

} // namespace platform
