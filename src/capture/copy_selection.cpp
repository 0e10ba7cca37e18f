#include "capture/ax.h"
#include "platform/main_queue.h"

namespace AX {

namespace {

constexpr int mostPolls = 20;
constexpr std::uint32_t pollInterval = 20'000; // microseconds
constexpr platform::CGKeyCode cKey = 8;        // of C on a US keyboard

// The first text that arrives on the emptied pasteboard.
std::optional<std::string> awaitCopiedText(const platform::Pasteboard& pasteboard,
                                           std::int64_t changeCountBefore) {
    for (int poll = 0; poll < mostPolls; ++poll) {
        platform::usleep(pollInterval);
        if (pasteboard.changeCount() == changeCountBefore) continue;
        auto copied = pasteboard.stringForType(platform::PasteboardTypeString);
        if (copied && !copied->empty()) return copied;
    }
    return std::nullopt;
}

void postCopyKey() {
    using platform::KeystrokeGuard;
    std::optional<KeystrokeGuard> guard;
    if (const auto pid = targetPid()) guard.emplace(*pid, KeystrokeGuard::Against::otherWindows);
    postKey("c", cKey, platform::kCGEventFlagMaskCommand);
    if (guard) guard->deliver();
}

} // namespace

std::optional<std::string> copySelectionViaClipboard() {
    auto& pasteboard = platform::Pasteboard::generalPasteboard();
    auto snapshot = snapshotPasteboard(pasteboard);
    const auto changeCount = pasteboard.changeCount();
    pasteboard.clearContents();
    postCopyKey();
    auto copied = awaitCopiedText(pasteboard, changeCount);
    restorePasteboard(pasteboard, std::move(snapshot));
    return copied;
}

} // namespace AX
