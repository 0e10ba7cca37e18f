// What a press of the hot key does: read what the user is writing in the frontmost application, record where
// it came from, and send it to the interface.
#include "capture/ax.h"
#include "desktop/desktop_bridge.h"
#include "platform/uuid.h"
#include "platform/workspace.h"
#include "text/text.h"

using flutter::EncodableMap;
using platform::AXUIElementRef;
using platform::RunningApplication;

struct DesktopBridge::Captured {
    std::string text;
    std::string_view source = "clipboard"; // or "selection", "field"
    bool truncated = false;
};

void DesktopBridge::capture() {
    if (pastePending_) return;
    const auto front = platform::Workspace::sharedWorkspace().frontmostApplication();
    const auto me = RunningApplication::currentApplication();
    const bool hostIsFrontmost = front == me;
    // When the host itself is in front, the hot key means the application of the previous capture.
    const auto target = hostIsFrontmost ? captureState_.sourceApp : front;
    if (!target || target->isTerminated() || *target == me) return show();
    if (excluded_.contains(text::lowercased(target->bundleIdentifier().value_or(""))))
        return platform::beep();

    captureState_ = {};
    captureState_.sourceApp = target;
    const AX::TargetPid asked{target->processIdentifier()};

    Captured captured;
    const bool trusted = platform::AXIsProcessTrustedWithOptions({.kAXTrustedCheckOptionPrompt = true});
    if (const auto element = trusted ? AX::focusedElement() : AXUIElementRef{}) {
        if (AX::isSecure(element)) return platform::beep();
        recordFocus(element);
        captured = readText(hostIsFrontmost);
        grantToken(captured);
    }
    if (captured.text.empty()) {
        const auto& pasteboard = platform::Pasteboard::generalPasteboard();
        captured = {pasteboard.stringForType(platform::PasteboardTypeString).value_or(""), "clipboard",
                    captured.truncated};
        captureState_.captureToken.clear();
    }
    sendCapture(captured);
}

void DesktopBridge::recordFocus(const AXUIElementRef& element) {
    captureState_.element = element;
    captureState_.sourceWindow = focusedWindow(captureState_.sourceApp->processIdentifier());
    captureState_.originalValue = AX::stringAttribute(element, "AXValue");
    captureState_.originalSelection = AX::stringAttribute(element, "AXSelectedText");
    captureState_.originalRange = range(element);
}

// The selection, else a synthetic copy, else the whole field.
DesktopBridge::Captured DesktopBridge::readText(bool hostIsFrontmost) {
    const auto& selection = captureState_.originalSelection;
    if (selection && !selection->empty()) return {*selection, "selection"};

    // The keystroke goes to the program in front, which must not be the host.
    if (!hostIsFrontmost) {
        if (auto copied = AX::copySelectionViaClipboard()) return {std::move(*copied), "clipboard"};
    }
    if (auto field = AX::focusedFieldValue()) {
        captureState_.replaceAll = true;
        return {std::move(field->text), "field", field->truncated};
    }
    return {};
}

// A text gets a token only when paste-back can check its place. A shortened field gets none: replacing the
// whole field with a rewrite of its beginning would lose its end.
void DesktopBridge::grantToken(const Captured& captured) {
    if (captured.truncated || !captureState_.sourceWindow) return;
    const bool placeIsKnown = (captured.source == "field" && captureState_.originalValue) ||
                              (captured.source == "selection" && captureState_.originalRange);
    if (placeIsKnown) captureState_.captureToken = platform::UUIDString();
}

void DesktopBridge::sendCapture(const Captured& captured) {
    const auto title = AX::stringAttribute(captureState_.sourceWindow, "AXTitle");
    const auto& source = *captureState_.sourceApp;
    channel_.invokeMethod("capture", EncodableMap{
                                         {"text", captured.text},
                                         {"source", captured.source},
                                         {"app_id", source.bundleIdentifier().value_or("")},
                                         {"app_name", source.localizedName().value_or("")},
                                         {"title", title.value_or("")},
                                         {"token", captureState_.captureToken},
                                         {"truncated", captured.truncated},
                                     });
}
