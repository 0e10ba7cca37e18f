// Single queries of the application that is captured from or pasted into.
#include "desktop/desktop_bridge.h"

using platform::AXUIElementRef;

AXUIElementRef DesktopBridge::focusedWindow(pid_t pid) {
    const auto application = platform::AXUIElementCreateApplication(pid);
    const auto value = platform::AXUIElementCopyAttributeValue(application, "AXFocusedWindow");
    const auto* window = value ? std::get_if<AXUIElementRef>(&*value) : nullptr;
    return window ? *window : AXUIElementRef{};
}

std::optional<platform::CFRange> DesktopBridge::range(const AXUIElementRef& element) {
    const auto value = platform::AXUIElementCopyAttributeValue(element, "AXSelectedTextRange");
    const auto* boxed = value ? std::get_if<platform::AXValue>(&*value) : nullptr;
    return boxed ? platform::AXValueGetValue(*boxed, platform::AXValueType::cfRange) : std::nullopt;
}
