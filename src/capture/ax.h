// What capture and paste-back ask of other programs: their focused element and its text, a synthetic copy
// through the pasteboard, and single keystrokes. Main thread only; every operation is synchronous, and
// whatever fails makes the result absent.
#pragma once

#include "platform/accessibility.h"
#include "platform/event.h"
#include "platform/pasteboard.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace AX {

// The process that focusedElement() asks; absent: the frontmost application. Set through TargetPid.
std::optional<pid_t> targetPid();

// Directs the queries to one process until the object goes.
class TargetPid {
public:
    explicit TargetPid(pid_t pid);
    ~TargetPid();
    TargetPid(const TargetPid&) = delete;
    TargetPid& operator=(const TargetPid&) = delete;
};

// The element with the keyboard focus in the target process; null when there is none. A process that does not
// answer is asked to show its elements and tried again for 1.5 s, then whatever has the focus anywhere is
// taken.
platform::AXUIElementRef focusedElement();

struct FieldValue {
    std::string text; // trimmed, not empty, at most 3000 characters
    bool truncated = false;
};

// The text of the focused element when it is a text field.
std::optional<FieldValue> focusedFieldValue();

// One attribute as a string; absent when it cannot be read, is null or of another type.
std::optional<std::string> stringAttribute(const platform::AXUIElementRef& element,
                                           std::string_view attribute);

// True for a password field: never read, never pasted into.
bool isSecure(const platform::AXUIElementRef& element);

// Per item, in order, each type with its data; a type whose data cannot be had is left out.
using PasteboardSnapshot = std::vector<std::vector<std::pair<platform::PasteboardType, platform::Data>>>;

PasteboardSnapshot snapshotPasteboard(const platform::Pasteboard& pasteboard);
void restorePasteboard(platform::Pasteboard& pasteboard, PasteboardSnapshot snapshot);

// Copies the frontmost application's selection with the copy keystroke and returns its text, unchanged. The
// user's pasteboard is put back in every outcome. Takes up to about 400 ms.
std::optional<std::string> copySelectionViaClipboard();

// The key that types `character` without modifiers on the current layout.
std::optional<platform::CGKeyCode> keyCode(std::string_view character);

// Presses and releases the key that types `character`, or `fallbackKeyCode` when no key does.
void postKey(std::string_view character, platform::CGKeyCode fallbackKeyCode, platform::CGEventFlags flags);

} // namespace AX
