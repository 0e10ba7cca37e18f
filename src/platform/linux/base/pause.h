#pragma once

#include <functional>

namespace platform {

// Work of the desktop's that cannot wait while the main thread pauses (`usleep` of platform/main_queue.h):
// what arrives on the descriptor is handled during a pause as well. It must not call into the host's rooms.
class [[nodiscard]] WorkInPauses {
public:
    // `work` handles everything that has arrived, also what a library has read from the descriptor already.
    // Main thread only.
    WorkInPauses(int descriptor, std::function<void()> work);
    ~WorkInPauses();
    WorkInPauses(const WorkInPauses&) = delete;
    WorkInPauses& operator=(const WorkInPauses&) = delete;

    int descriptor() const { return descriptor_; }
    void run() const { work_(); }

private:
    int descriptor_;
    std::function<void()> work_;
};

} // namespace platform
