#pragma once

#include "platform/event.h"
#include "platform/linux/typing/place.h"
#include "platform/linux/typing/place_events.h"
#include "platform/linux/x11/keyboard/raw_input.h"
#include "platform/linux/x11/windows/front_window.h"

#include <optional>
#include <string>
#include <vector>

namespace platform {
namespace selection {
class HeldRequests;
}

// What a guard knows of the place, and the keystrokes that wait for its end. Main thread only.
struct KeystrokeGuard::Watch {
    Watch(pid_t process, Against against);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    bool deliver();

    // The one that lives; null when none does.
    static Watch* current();

    std::vector<KeyboardEvent> keystrokes;

private:
    bool isInFront() const;
    bool placeIsUnchanged();
    bool inputWasSeen();
    bool decide(selection::HeldRequests& requests);
    bool mayPaste(const typing::Happened& happened) const;
    bool allIsSelected() const;

    pid_t process_;
    Against against_;
    std::optional<std::string> role_;
    std::optional<x11::FrontWindow> window_;
    // Against any change:
    typing::Place place_;
    std::optional<typing::PlaceEvents> events_;
    bool showsFocus_ = false; // the element says that it has the focus
    std::optional<x11::RawInput> input_;
    bool inputSeen_ = false;
};

} // namespace platform
