// The host's own program, run once for what its command line offers. Main thread only; answers come from the
// main loop.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillmark {

// Beside this program, else wherever the desktop finds it.
std::string hostProgram();

struct HostAnswer {
    int status = -1; // the exit status; -1 when it could not be run
    std::string output = {};
    std::string error = {};
};

void runHost(const std::vector<std::string>& arguments, std::function<void(const HostAnswer&)> done = {});

} // namespace quillmark
