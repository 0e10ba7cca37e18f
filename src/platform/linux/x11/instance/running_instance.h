#pragma once

#include "platform/linux/x11/instance/request.h"

#include <sys/types.h>

#include <optional>

namespace platform {

// What became of a request to the host that runs already.
struct InstanceCall {
    // `none`: no host runs. `silent`: it runs but does not answer.
    enum class State { answered, none, silent };

    State state = State::none;
    InstanceAnswer answer;
    std::optional<pid_t> process; // the running host's; absent when it does not say
};

// Asks the host of this user on this display, and waits up to five seconds for the answer. Main thread only.
InstanceCall askRunningInstance(InstanceRequest request, const InstanceCaller& caller);

} // namespace platform
