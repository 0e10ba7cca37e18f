#pragma once

// The program's main loop. Main thread only.
namespace platform {

// Runs until endMainLoop() and returns the status it was given; at once when it was called before.
int runMainLoop();

// Ends the main loop once its current callback returns. Of several calls the first one's status counts.
void endMainLoop(int status);

} // namespace platform
