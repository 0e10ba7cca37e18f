#pragma once

#include "platform/running_application.h"
#include "platform/url.h"

#include <optional>

namespace platform {

// The desktop session. Main thread only.
class Workspace {
public:
    static Workspace& sharedWorkspace();

    // The program that is in front: the one that gets the user's keys. Absent when there is none.
    std::optional<RunningApplication> frontmostApplication() const;

    // Opens a link or file with the user's default program for it. True when that program could be started.
    bool openURL(const URL& url) const;

private:
    Workspace() = default;
};

// The system alert sound.
void beep();

} // namespace platform
