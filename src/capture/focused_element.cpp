#include "capture/ax.h"
#include "platform/main_queue.h"
#include "platform/workspace.h"

using platform::AXUIElementRef;

namespace AX {

namespace {

constexpr int mostRetries = 30;
constexpr std::uint32_t retryInterval = 50'000; // microseconds

std::optional<pid_t> target;

std::optional<pid_t> processToQuery() {
    if (target) return target;
    const auto front = platform::Workspace::sharedWorkspace().frontmostApplication();
    if (!front) return std::nullopt;
    return front->processIdentifier();
}

AXUIElementRef ask(const AXUIElementRef& element) {
    const auto value = platform::AXUIElementCopyAttributeValue(element, "AXFocusedUIElement");
    const auto* focused = value ? std::get_if<AXUIElementRef>(&*value) : nullptr;
    return focused ? *focused : AXUIElementRef{};
}

} // namespace

std::optional<pid_t> targetPid() { return target; }

TargetPid::TargetPid(pid_t pid) { target = pid; }

TargetPid::~TargetPid() { target.reset(); }

AXUIElementRef focusedElement() {
    const auto pid = processToQuery();
    if (!pid) return {};
    const auto application = platform::AXUIElementCreateApplication(*pid);
    if (auto focused = ask(application)) return focused;

    // Some programs create their elements only once an assistive program has written one of these two.
    platform::AXUIElementSetAttributeValue(application, "AXManualAccessibility", true);
    platform::AXUIElementSetAttributeValue(application, "AXEnhancedUserInterface", true);
    for (int retry = 0; retry < mostRetries; ++retry) {
        platform::usleep(retryInterval);
        if (auto focused = ask(application)) return focused;
    }
    return ask(platform::AXUIElementCreateSystemWide());
}

} // namespace AX
