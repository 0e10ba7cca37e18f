#pragma once

namespace platform {

// Told by the interface's socket: whether it holds bytes that the interface has not taken yet. The answer to
// OutgoingMessages::whenTaken(). Main thread only.
void setMessagesWaiting(bool waiting);

} // namespace platform
