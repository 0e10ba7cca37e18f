// "paste": put the text on the pasteboard and, when the field that it was captured from is focused and
// unchanged, type it in there; otherwise the user can paste it.
#include "capture/ax.h"
#include "capture/paste_target.h"
#include "desktop/desktop_bridge.h"
#include "flutter/arguments.h"
#include "platform/workspace.h"
#include "text/text.h"

using platform::RunningApplication;

namespace {

constexpr platform::Seconds pasteDeadline{1.0};
constexpr platform::Seconds pollInterval{0.02};
constexpr std::uint32_t pauseBeforeKeys = 30'000;     // microseconds
constexpr std::uint32_t pauseAfterSelectAll = 40'000; // microseconds
constexpr platform::CGKeyCode aKey = 0;               // of A on a US keyboard
constexpr platform::CGKeyCode vKey = 9;               // of V on a US keyboard
constexpr platform::CGEventFlags heldModifiers =
    platform::kCGEventFlagMaskShift | platform::kCGEventFlagMaskControl |
    platform::kCGEventFlagMaskAlternate | platform::kCGEventFlagMaskCommand;

void putOnPasteboard(std::string_view text) {
    auto& pasteboard = platform::Pasteboard::generalPasteboard();
    pasteboard.clearContents();
    pasteboard.setString(text, platform::PasteboardTypeString);
}

bool isModifierHeld() { return (platform::Event::modifierFlags() & heldModifiers) != 0; }

bool isFrontmost(const RunningApplication& application) {
    const auto front = platform::Workspace::sharedWorkspace().frontmostApplication();
    return front && front->processIdentifier() == application.processIdentifier();
}

} // namespace

// One paste from its start to its reply. Each scheduled attempt keeps it alive.
struct DesktopBridge::PasteAttempt {
    platform::TimePoint start;
    RunningApplication source;
    PasteTarget target;
    std::string text;
    Result result;

    bool isLate() const { return platform::now() - start >= pasteDeadline; }
    void typeText() const;
};

void DesktopBridge::paste(Arguments arguments, Result result) {
    if (pastePending_) return result.error("busy", "A paste is already pending");
    const auto* map = flutter::asMap(arguments);
    const auto* given = flutter::asString(flutter::member(map, "text"));
    const std::string_view text = given ? *given : std::string_view();
    putOnPasteboard(text);
    if (!canPasteBack(flutter::asString(flutter::member(map, "token")))) return result.success("copied-only");
    startPaste(std::string(text), std::move(result));
}

bool DesktopBridge::canPasteBack(const std::string* token) const {
    const auto& capture = captureState_;
    return token && !token->empty() && text::equalStrings(*token, capture.captureToken) &&
           capture.sourceApp && !capture.sourceApp->isTerminated() && capture.element &&
           capture.sourceWindow &&
           platform::AXIsProcessTrustedWithOptions({.kAXTrustedCheckOptionPrompt = false});
}

void DesktopBridge::startPaste(std::string text, Result result) {
    const auto source = *captureState_.sourceApp;
    PasteTarget target{captureState_};
    pastePending_ = true;
    captureState_.captureToken.clear();
    if (const auto window = window_.lock()) window->orderOut();
    source.activateFromApplication(RunningApplication::currentApplication());
    poll(std::make_shared<PasteAttempt>(
        PasteAttempt{platform::now(), source, std::move(target), std::move(text), std::move(result)}));
}

void DesktopBridge::poll(const std::shared_ptr<PasteAttempt>& attempt) {
    const bool held = isModifierHeld();
    if (attempt->isLate()) return giveUp(*attempt);
    if (held || !isFrontmost(attempt->source)) {
        platform::MainQueue::asyncAfter(pollInterval,
                                        [bridge = shared_from_this(), attempt] { bridge->poll(attempt); });
        return;
    }
    if (!typeBack(*attempt)) return giveUp(*attempt);
    pastePending_ = false;
    attempt->result.success("pasted");
}

// False when the place is not what it was, and nothing is typed. What changes later, the guard has to notice.
bool DesktopBridge::typeBack(const PasteAttempt& attempt) {
    using platform::KeystrokeGuard;
    KeystrokeGuard guard(attempt.source.processIdentifier(), KeystrokeGuard::Against::anyChange);
    if (!targetUnchanged(attempt.source, attempt.target)) return false;
    // The check may have taken long enough for the user to do something else.
    if (attempt.isLate() || isModifierHeld() || !isFrontmost(attempt.source)) return false;
    attempt.typeText();
    return guard.deliver();
}

void DesktopBridge::PasteAttempt::typeText() const {
    putOnPasteboard(text);
    platform::usleep(pauseBeforeKeys);
    if (target.replaceAll) {
        AX::postKey("a", aKey, platform::kCGEventFlagMaskCommand);
        platform::usleep(pauseAfterSelectAll);
    }
    AX::postKey("v", vKey, platform::kCGEventFlagMaskCommand);
}

void DesktopBridge::giveUp(PasteAttempt& attempt) {
    pastePending_ = false;
    show();
    attempt.result.success("copied-only");
}

bool DesktopBridge::targetUnchanged(const RunningApplication& source, const PasteTarget& target) {
    const AX::TargetPid asked{source.processIdentifier()};
    if (!isFrontmost(source)) return false;
    if (!CFEqual(focusedWindow(source.processIdentifier()), target.window)) return false;
    const auto element = AX::focusedElement();
    if (!CFEqual(element, target.element)) return false;
    if (AX::isSecure(element)) return false;
    if (!target.textUnchanged(element)) return false;
    if (target.replaceAll) return true;
    return target.selectionUnchanged(element) && target.range && range(element) == target.range;
}
