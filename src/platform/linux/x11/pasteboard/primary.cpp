#include "platform/linux/x11/pasteboard/primary.h"

#include "platform/linux/x11/pasteboard/thread.h"

namespace platform::selection {

void copyPrimarySelection(std::uint32_t window) { Thread::shared().copyPrimary(window); }

std::optional<PrimarySelection> primarySelection(std::uint32_t window) {
    return Thread::shared().readPrimary(window);
}

} // namespace platform::selection
