#pragma once

#include <optional>
#include <string>

// What must be there before a window can open. Each answers with one sentence that says what is missing and
// what to do, or absent when all is well.
namespace platform {

// A display of an X session. A Wayland session is told apart, also behind the X server that such a session
// offers.
std::optional<std::string> displayProblem();

// The session bus, and the accessibility bus found through it.
std::optional<std::string> accessibilityProblem();

} // namespace platform
