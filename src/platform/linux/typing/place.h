#pragma once

#include "platform/accessibility.h"
#include "platform/linux/at_spi/bus.h"
#include "platform/linux/at_spi/object.h"

#include <sys/types.h>

#include <optional>
#include <string>

namespace platform::typing {

// The place that keystrokes are meant for, as a program shows it. What cannot be read is absent.
struct Place {
    AXUIElementRef element; // with the focus
    std::optional<std::string> text, selectedText, subrole;
    std::optional<CFRange> selection;

    bool operator==(const Place& other) const;
};

// Where the focus is in that program.
Place placeIn(pid_t process);

AXUIElementRef focusedElement(pid_t process);
std::optional<std::string> roleOf(const AXUIElementRef& element);
// Absent when the program does not answer in time, or not about that.
std::optional<bool> hasFocusSoon(const AXUIElementRef& element, at_spi::Milliseconds time);
std::optional<std::string> selectedTextSoon(const AXUIElementRef& element, at_spi::Milliseconds time);

// False for an element that is not on the accessibility bus.
bool tellsSelectionLate(const AXUIElementRef& element);

// Null for an element that is not on the accessibility bus.
const at_spi::Object* objectOf(const AXUIElementRef& element);

} // namespace platform::typing
