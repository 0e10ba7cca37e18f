#pragma once

#include <string>
#include <vector>

namespace platform {

// Shows a message of the program in a window of its own and waits for the person's choice: a button's number,
// counted from 0. The answer is 0 as well when the person closes the window, or when there is no display. The
// last button is the one that Return presses. Starts GTK when it has not been started; a Wayland session will
// do.
int showDialog(const std::string& heading, const std::string& sentence,
               const std::vector<std::string>& buttons);

} // namespace platform
