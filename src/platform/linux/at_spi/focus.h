#pragma once

#include "platform/linux/at_spi/applications.h"

#include <optional>
#include <vector>

// Where the keyboard focus is inside one program. Main thread only; the bus's budget limits the time of every
// function.
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
std::optional<FocusedObject> focusedElement(Bus& bus, Application& program);

// The program's active window. Absent when it has none.
std::optional<Object> activeWindow(Bus& bus, Application& program);

// What `focusedElement` found last, if it is still on the screen. While another program is in front, this one
// has no focused element; when it comes to the front again, the focus will be there.
std::optional<FocusedObject> lastFocusedElement(Bus& bus, Application& program);
// The same for `activeWindow`.
std::optional<Object> lastActiveWindow(Bus& bus, Application& program);

// The objects below `top` that have the focus, found level by level: for programs without `focusedWithin`.
std::vector<Object> walkToFocus(Bus& bus, const Object& top);

} // namespace platform::at_spi
