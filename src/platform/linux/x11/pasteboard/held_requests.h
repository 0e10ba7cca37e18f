#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

namespace platform::selection {

// While it lives, but no longer than its limit, one program waits for what it asks of the host's pasteboard
// until the host has decided. Which types there are it is told at once. Main thread only.
class [[nodiscard]] HeldRequests {
public:
    // Of the program that made `window`.
    HeldRequests(std::uint32_t window, std::chrono::milliseconds limit);
    // What it still waits for it gets; so it does at the limit.
    ~HeldRequests();
    HeldRequests(const HeldRequests&) = delete;
    HeldRequests& operator=(const HeldRequests&) = delete;

    // Waits until it asks for something more; false when it does not within this time, or by the limit.
    bool next(std::chrono::milliseconds time);

    // Gives or refuses it what it has waited for longest.
    void answer(bool deliver);

private:
    struct Count;
    std::shared_ptr<Count> count_;
    std::chrono::steady_clock::time_point end_;
};

} // namespace platform::selection
