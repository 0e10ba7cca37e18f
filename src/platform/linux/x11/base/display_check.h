#pragma once

#include <optional>
#include <string>

namespace platform {

// Absent when a window can open on the display of an X session; else one sentence that says what is missing
// and what to do. A Wayland session is told apart, also behind the X server that such a session offers.
std::optional<std::string> displayProblem();

} // namespace platform
