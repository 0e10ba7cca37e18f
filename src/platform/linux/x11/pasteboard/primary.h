#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace platform::selection {

// What is selected in a program, as it told the X server.
struct PrimarySelection {
    std::string text;
    std::uint32_t since = 0; // the server's time; another one for each selection
    std::chrono::milliseconds age{};
};

// Copies for a program that has no copy keystroke: puts the text selected in it, which X calls the PRIMARY
// selection, on the pasteboard, as the host's contents. Does nothing when the program of `window` does not
// own that selection. Takes two seconds at most. Main thread only.
void copyPrimarySelection(std::uint32_t window);

// Absent when the program of `window` does not own that selection, does not answer within 100 ms, or
// something has been pasted over it. Main thread only.
std::optional<PrimarySelection> primarySelection(std::uint32_t window);

// What is selected by now has been pasted over; most programs go on owning it. Main thread only.
void primaryIsPastedOver();

} // namespace platform::selection
