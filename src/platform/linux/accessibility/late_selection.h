#pragma once

#include "platform/linux/at_spi/focused_object.h"
#include "platform/linux/at_spi/text.h"

namespace platform::ax {

// What an element says of its text, read again where a browser has not caught up yet: the page tells the X
// server what has just been selected in it, and the browser learns it later. Waits 100 ms for it at most,
// once for each selection; if it still shows none, nothing of the reading is left, because what is selected
// cannot be told then. Main thread only.
at_spi::TextReading settled(at_spi::Bus& bus, const at_spi::FocusedObject& element,
                            at_spi::TextReading reading);

} // namespace platform::ax
