#pragma once

#include <string>

namespace platform::at_spi {

// Where the desktop session's message bus is; empty when there is none. GIO's own search would start a new
// bus then.
std::string sessionBusAddress();

} // namespace platform::at_spi
