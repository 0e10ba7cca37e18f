#pragma once

namespace platform {

// From now on the end of the desktop session is a termination like any other; a session that waits for its
// answer is told on leaving that it may end.
void joinSession();
void leaveSession();

} // namespace platform
