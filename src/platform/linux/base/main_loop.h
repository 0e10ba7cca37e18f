#pragma once

// The program's main loop. Main thread only.
namespace platform {

// Runs until endMainLoop() and returns the status it was given; at once when it was called before.
int runMainLoop();

// Ends the main loop after what runs now. The first status counts.
void endMainLoop(int status);

} // namespace platform
