#pragma once

#include "platform/linux/at_spi/programs.h"

#include <optional>
#include <vector>

// Where the focus is inside one program. Main thread only; every function's time is bounded by the bus's
// budget.
namespace platform::at_spi {

// An object with the keyboard focus, and what was seen of it when it was found.
struct FocusedObject {
    Object object;
    Role role = Role::invalid;
    States states;
    bool text = false; // it has the Text interface
    Toolkit toolkit = Toolkit::other;
};

// The focused element of the program, and in `program` where it was found. Absent when it shows none.
std::optional<FocusedObject> focusedElement(Bus& bus, Program& program);

// The program's active window. Absent when it has none.
std::optional<Object> activeWindow(Bus& bus, Program& program);

// What `focusedElement` found last, if it still is on the screen: a program that is not active has no focus,
// and this is where it will be when it comes to the front again.
std::optional<FocusedObject> lastFocusedElement(Bus& bus, Program& program);
// The same for `activeWindow`.
std::optional<Object> lastActiveWindow(Bus& bus, Program& program);

// The objects that have the focus below `top`, found step by step: for programs that cannot be asked for
// them.
std::vector<Object> walkToFocus(Bus& bus, const Object& top);

} // namespace platform::at_spi
