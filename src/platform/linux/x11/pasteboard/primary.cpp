#include "platform/linux/x11/pasteboard/primary.h"

#include "platform/linux/x11/pasteboard/thread.h"

namespace platform::selection {
namespace {

std::optional<Clock::time_point> pastedOver;

} // namespace

void copyPrimarySelection(std::uint32_t window) { Thread::shared().copyPrimary(window); }

std::optional<PrimarySelection> primarySelection(std::uint32_t window) {
    const auto now = Clock::now();
    auto selected = Thread::shared().readPrimary(window);
    if (!selected || !pastedOver) return selected;
    // An age comes in the X server's whole milliseconds: against a finer time, a selection could seem newer
    // than the paste over it.
    if (selected->age >= std::chrono::floor<std::chrono::milliseconds>(now - *pastedOver)) selected.reset();
    return selected;
}

void primaryIsPastedOver() { pastedOver = Clock::now(); }

} // namespace platform::selection
