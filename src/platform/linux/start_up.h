#pragma once

#include <optional>
#include <string>

namespace platform {

// Absent when a window can open on the display of an X session; else one sentence that says what is missing and
// what to do. A Wayland session is told apart, also behind the X server that such a session offers.
std::optional<std::string> displayProblem();

// From now on, a display that goes (at the end of the session, for instance) leaves no socket behind. Xlib
// then ends the program.
void cleanUpWhenDisplayIsLost();

} // namespace platform
