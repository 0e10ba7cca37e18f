#pragma once

#include <functional>

namespace platform {

// Clean-up that must happen even when the program ends without destroying its objects, as it does when the
// connection to the X server breaks. Main thread only.

// While it lives, runEndHooks() calls `hook`. The hook must not talk to the display.
class [[nodiscard]] EndHook {
public:
    explicit EndHook(std::function<void()> hook);
    ~EndHook();
    EndHook(const EndHook&) = delete;
    EndHook& operator=(const EndHook&) = delete;

private:
    friend void runEndHooks();
    std::function<void()> hook_;
};

// Calls every living hook, the latest first.
void runEndHooks();

} // namespace platform
