#include "platform/linux/base/main_loop.h"

#include <glib.h>

#include <optional>

namespace platform {
namespace {

std::optional<int> finalStatus;

} // namespace

int runMainLoop() {
    while (!finalStatus)
        g_main_context_iteration(nullptr, TRUE);
    return *finalStatus;
}

void endMainLoop(int status) {
    if (!finalStatus) finalStatus = status;
    g_main_context_wakeup(nullptr);
}

} // namespace platform
