#pragma once

#include <cstdint>

namespace platform::selection {

// Copies for a program that has no copy keystroke: puts the text selected in it, which X calls the PRIMARY
// selection, on the pasteboard, as the host's contents. Does nothing when the program of `window` does not
// own that selection. Takes two seconds at most. Main thread only.
void copyPrimarySelection(std::uint32_t window);

} // namespace platform::selection
