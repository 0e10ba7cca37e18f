#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

// The interface elements of other programs. Main thread only; every call is synchronous and takes a bounded
// time, also when the other program hangs. The result of a call that fails, for any reason, is absent.
namespace platform {

// What a desktop knows of one element; each desktop completes it.
class AXUIElement;

// A counted handle to an interface element of another process, or to the system-wide element. Copies refer to
// the same element. A default-constructed handle refers to nothing, and every query on it fails.
class AXUIElementRef {
public:
    AXUIElementRef() = default;
    explicit AXUIElementRef(std::shared_ptr<const AXUIElement> element) : element_(std::move(element)) {}

    explicit operator bool() const { return element_ != nullptr; }
    const AXUIElement* get() const { return element_.get(); }

private:
    std::shared_ptr<const AXUIElement> element_;
};

// True when both handles refer to the same element of the same process. A handle to nothing is equal to none,
// itself included.
bool CFEqual(const AXUIElementRef& left, const AXUIElementRef& right);

// A range in the units that the element's own program uses for its text: hand it back to that program, never
// index a string with it.
struct CFRange {
    std::int64_t location = 0;
    std::int64_t length = 0;

    bool operator==(const CFRange&) const = default;
};

// Kinds of boxed value; the numbers are the accessibility interface's own.
enum class AXValueType : std::uint32_t { cgPoint = 1, cgSize = 2, cgRect = 3, cfRange = 4 };

// A boxed value; its type says what it holds. `range` has a meaning with `AXValueType::cfRange` only.
struct AXValue {
    AXValueType type = AXValueType::cfRange;
    CFRange range;
};

// The range in `value`, or absent when it holds another type than `type`.
std::optional<CFRange> AXValueGetValue(const AXValue& value, AXValueType type);

// An attribute's value; monostate is a null value that was read successfully.
using AXAttributeValue = std::variant<std::monostate, bool, std::string, AXUIElementRef, AXValue>;

// The element of the application with that process identifier. Never fails; queries on it fail when it is
// gone.
AXUIElementRef AXUIElementCreateApplication(pid_t pid);

// The element that stands for the whole desktop: its "AXFocusedUIElement" is whatever has the focus anywhere.
AXUIElementRef AXUIElementCreateSystemWide();

// Reads one attribute. Absent when the read fails.
//
// Attributes: "AXFocusedUIElement" (application, system-wide), "AXFocusedWindow" (application), "AXTitle"
// (window), "AXRole", "AXSubrole", "AXEditable", "AXValue", "AXSelectedText", "AXSelectedTextRange"
// (elements). Roles are "AXTextField", "AXTextArea", "AXComboBox", "AXSearchField", "AXWebArea" for text and
// the desktop's own otherwise; the subrole of a password field is "AXSecureTextField".
std::optional<AXAttributeValue> AXUIElementCopyAttributeValue(const AXUIElementRef& element,
                                                              std::string_view attribute);

// Writes one attribute of an application: "AXManualAccessibility" or "AXEnhancedUserInterface", which ask a
// program that shows nothing yet to show its elements. True on success.
bool AXUIElementSetAttributeValue(const AXUIElementRef& element, std::string_view attribute, bool value);

struct AXTrustedCheckOptions {
    bool kAXTrustedCheckOptionPrompt = false;
};

// True when the host may use the accessibility interface. With the prompt option, the desktop is asked for
// the permission when it may not.
bool AXIsProcessTrustedWithOptions(AXTrustedCheckOptions options);

} // namespace platform
