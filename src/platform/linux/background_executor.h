#pragma once

#include "platform/task.h"

namespace platform {

// The task goes on, on one of the few threads that all background work shares. Any thread.
void resumeInBackground(Task::Suspended task);

} // namespace platform
