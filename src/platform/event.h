#pragma once

#include "platform/keyboard_layout.h"

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <optional>

// Synthetic keystrokes, and the modifier keys that people hold. Main thread only.
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

// Posts the event to the program that has the focus. A key goes down and comes up when its key-up event is
// posted. That program sees exactly the event's own modifiers, whatever people hold at this moment, and none
// stays pressed. Command keys are withheld where they would not copy or paste but do harm: in a terminal,
// Command-C is Control-C and ends what runs there.
void CGEventPost(CGEventTapLocation tap, const KeyboardEvent& event);

// Keeps keystrokes from arriving where they are not meant to. Those posted while it lives are meant for one
// program: they arrive together, or none of them does, namely when something has come between since it was
// made. One lives at a time.
class [[nodiscard]] KeystrokeGuard {
public:
    // What withholds the keystrokes: that another window is in front; or besides that any change of the
    // program's focused element, its text or its selection, and any key or button that a person has pressed.
    enum class Against { otherWindows, anyChange };

    KeystrokeGuard(pid_t process, Against against);
    ~KeystrokeGuard();
    KeystrokeGuard(const KeystrokeGuard&) = delete;
    KeystrokeGuard& operator=(const KeystrokeGuard&) = delete;

    // Now they arrive; without this call they never do. False when they were withheld, or the program was
    // refused what it was to paste.
    bool deliver();

    struct Watch;

private:
    std::unique_ptr<Watch> watch_;
};

class Event {
public:
    // The modifier keys held at this moment, locks included.
    static CGEventFlags modifierFlags();
};

} // namespace platform
