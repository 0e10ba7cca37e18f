#pragma once

#include "platform/url.h"

namespace platform {

// Starts the user's default program for a link or file. It gets nothing of the host's own: a session of its
// own, so that it outlives the host and the host's terminal, the limit of open files from before the host,
// and no QUILLMARK_ variable. False when there is no such program or no such file. Main thread only.
bool launchDefaultProgram(const URL& url);

} // namespace platform
