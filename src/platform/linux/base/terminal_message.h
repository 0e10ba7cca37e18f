#pragma once

#include <string_view>

namespace platform {

// Writes one line for the person at the terminal on standard error, with the program's name before it.
void printMessage(std::string_view sentence);

} // namespace platform
