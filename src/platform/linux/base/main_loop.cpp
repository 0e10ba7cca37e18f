#include "platform/linux/base/main_loop.h"

#include <glib.h>

#include <optional>
#include <utility>

namespace platform {
namespace {

std::optional<MainLoopEnd> theEnd;

} // namespace

MainLoopEnd runMainLoop() {
    while (!theEnd)
        g_main_context_iteration(nullptr, TRUE);
    return *theEnd;
}

void endMainLoop(MainLoopEnd end) {
    if (!theEnd) theEnd = std::move(end);
    g_main_context_wakeup(nullptr);
}

} // namespace platform
