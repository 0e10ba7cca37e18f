#pragma once

#include "platform/linux/at_spi/events.h"

#include <string_view>
#include <vector>

namespace platform::at_spi {

// What is left of what has happened to an object whose text was `text` once what has not changed it is left
// out: Qt 5 and 6 lay a paragraph out anew at each step of an input method, and tell that it was removed and
// put back. Any thread.
std::vector<Event> withoutPutBack(const std::vector<Event>& events, std::string_view text);

} // namespace platform::at_spi
