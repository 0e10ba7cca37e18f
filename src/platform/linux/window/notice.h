#pragma once

#include <string>

namespace platform {

// Shows a message of the program to the person in a window of its own, in front of the others. It stays until
// the person closes it; returns at once. Main thread, with GTK started.
void showNotice(const std::string& heading, const std::string& text);

} // namespace platform
