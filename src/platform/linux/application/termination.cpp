#include "platform/linux/application/termination.h"

#include "platform/linux/base/main_loop.h"

#include <utility>

namespace platform {

Termination& Termination::shared() {
    static Termination termination;
    return termination;
}

void Termination::ask(bool& asker) {
    asker = true;
    settle(delegate != nullptr ? delegate->applicationShouldTerminate()
                               : ApplicationTerminateReply::terminateNow);
}

void Termination::settle(ApplicationTerminateReply reply) {
    if (reply == ApplicationTerminateReply::terminateLater) return;
    byPerson_ = false;
    const bool bySession = std::exchange(bySession_, false);
    if (reply == ApplicationTerminateReply::terminateNow)
        endMainLoop({});
    else if (bySession && refuseSession)
        refuseSession();
}

void Termination::sessionGoesOn() {
    if (std::exchange(bySession_, false) && !byPerson_ && delegate != nullptr)
        delegate->applicationTerminationWithdrawn();
}

} // namespace platform
