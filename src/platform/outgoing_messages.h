#pragma once

#include <functional>

// What has been sent to the interface and still waits in this process until the interface takes it.
namespace platform {

class OutgoingMessages {
public:
    // Puts `work` into the main queue as soon as nothing waits any more: whoever makes more of something than
    // the interface can take goes on then, so that what waits stays small. Counts what has been sent by work
    // that is in the main queue already. Any thread.
    static void whenTaken(std::function<void()> work);
};

} // namespace platform
