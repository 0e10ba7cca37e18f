#pragma once

#include "platform/accessibility.h"
#include "platform/event.h"
#include "platform/linux/at_spi/events.h"
#include "platform/linux/x11/keyboard/raw_input.h"
#include "platform/linux/x11/windows/front_window.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {
namespace typing {

// The place that keystrokes are meant for, as a program shows it. What cannot be read is absent.
struct Place {
    AXUIElementRef element;
    std::optional<std::string> text, selectedText, subrole;
    std::optional<CFRange> selection;

    bool operator==(const Place& other) const;
};

} // namespace typing

// What a guard knows of the place, and the keystrokes that wait for its end. Main thread only.
struct KeystrokeGuard::Watch {
    Watch(pid_t process, Against against);

    // The keystrokes arrive, or are dropped.
    void finish();

    // The one that lives; null when none does.
    static Watch* current();

    std::vector<KeyboardEvent> keystrokes;

private:
    bool isInFront() const;
    bool placeIsUnchanged();
    std::optional<std::vector<at_spi::Event>> eventsSoFar();
    bool isHere(const at_spi::Event& event) const;
    bool isChange(const at_spi::Event& event) const;
    bool inputWasSeen();

    pid_t process_;
    Against against_;
    std::optional<std::string> role_;
    std::optional<x11::FrontWindow> window_;
    typing::Place place_;
    std::unique_ptr<at_spi::Events> events_;
    std::optional<x11::RawInput> input_;
    bool inputSeen_ = false;
};

} // namespace platform
