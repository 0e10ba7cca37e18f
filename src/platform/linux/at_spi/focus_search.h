#pragma once

#include "platform/linux/at_spi/applications.h"
#include "platform/linux/at_spi/focused_object.h"

#include <vector>

// Looks for the keyboard focus all over a window. Main thread only.
namespace platform::at_spi {

// The objects below `top` that have the state FOCUSED; none also when the program needs longer than the usual
// deadline. It goes on searching then, and `application` keeps the search: the next call for the same `top`
// waits for its result.
std::vector<Object> searchFocus(Bus& bus, Application& application, const Object& top);

// Waits for the search; false when it still needs longer.
bool isFinished(Bus& bus, const Application::Search& search);

// The same, level by level, for programs that cannot be told to search: a few calls for every object on the
// screen.
std::vector<Object> walkToFocus(Bus& bus, const Object& top, Toolkit toolkit);

} // namespace platform::at_spi
