#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace platform {

// A state of the window, on or off, that only the window manager can give it. The window manager is asked
// once at a time, and again once it has answered if another state is wanted by then: metacity, openbox and
// xfwm4 each drop one of two requests that come close together. Main thread only.
class WantedState {
public:
    struct WindowManager {
        std::function<void(bool on)> ask;
        std::function<bool(bool on)> hasGiven; // whether the window is in that state now
        std::function<void(bool on)> refused;  // called when it has not given it in time; may be empty
    };

    explicit WantedState(WindowManager windowManager);

    void want(bool on);

    // Absent once it has been given or refused.
    std::optional<bool> wanted() const { return wanted_; }

    // To be called whenever the window's state may have changed.
    void check();

    // Nothing is wanted any more.
    void withdraw();

private:
    void ask();
    void answered(bool given);

    WindowManager windowManager_;
    std::optional<bool> wanted_;
    std::optional<bool> asked_;
    std::shared_ptr<char> request_; // a new one for each request: what waits for an older one's answer ends
};

} // namespace platform
