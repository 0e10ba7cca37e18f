#pragma once

#include <string>

// The program's main loop. Main thread only.
namespace platform {

// Why the main loop ended.
struct MainLoopEnd {
    int status = 0;      // for the program to exit with
    std::string message; // for the person who started the program; empty when there is nothing to say
};

// Runs until endMainLoop() and returns what it was given; at once when it was called before.
MainLoopEnd runMainLoop();

// Ends the main loop once its current callback returns. Of several calls the first one counts.
void endMainLoop(MainLoopEnd end);

} // namespace platform
