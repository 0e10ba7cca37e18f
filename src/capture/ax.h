// What capture and paste-back need of other programs: the focused element and its text, a synthetic copy
// through the pasteboard, and single keystrokes. Main thread only. Every operation is synchronous; the result
// of one that fails is absent.
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

// The process that focusedElement() queries, set through TargetPid; absent: the frontmost application.
std::optional<pid_t> targetPid();

// Makes focusedElement() query one process for as long as the object exists.
class TargetPid {
public:
    explicit TargetPid(pid_t pid);
    ~TargetPid();
    TargetPid(const TargetPid&) = delete;
    TargetPid& operator=(const TargetPid&) = delete;
};

// The element with the keyboard focus in the target process. A process that reports none is asked to show its
// elements and queried again for 1.5 s; then the element with the focus on the whole desktop is taken,
// whatever process it belongs to. Null when there is none either.
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

// For each item, in order, its types with their data; a type whose data cannot be read is left out.
using PasteboardSnapshot = std::vector<std::vector<std::pair<platform::PasteboardType, platform::Data>>>;

PasteboardSnapshot snapshotPasteboard(const platform::Pasteboard& pasteboard);
void restorePasteboard(platform::Pasteboard& pasteboard, PasteboardSnapshot snapshot);

// Copies the frontmost application's selection with the copy keystroke and returns its text, unchanged;
// absent when no text arrives within about 400 ms. In both cases the user's pasteboard is restored.
std::optional<std::string> copySelectionViaClipboard();

// The key that types `character` without modifiers on the current layout.
std::optional<platform::CGKeyCode> keyCode(std::string_view character);

// Presses and releases the key that types `character`, or `fallbackKeyCode` when no key does.
void postKey(std::string_view character, platform::CGKeyCode fallbackKeyCode, platform::CGEventFlags flags);

} // namespace AX
