#pragma once

#include "platform/linux/at_spi/applications.h"
#include "platform/linux/at_spi/focus_history.h"
#include "platform/linux/at_spi/focused_object.h"

#include <optional>

// Where the keyboard focus is inside one program. Main thread only; the bus's budget limits the time of every
// function.
namespace platform::at_spi {

// The focused element of the program, and in `application` where it was found. Absent when it shows none.
// `history` may be null.
std::optional<FocusedObject> focusedElement(Bus& bus, Application& application, const FocusHistory* history);

// The element that gained the focus last, if it is still on the screen. While another program is in front,
// this one has no focused element; when it comes to the front again, the focus will be there.
std::optional<FocusedObject> lastFocusedElement(Bus& bus, Application& application,
                                                const FocusHistory* history);

} // namespace platform::at_spi
