// The host's own program, run once for what its command line offers. Main thread only; answers come from the
// main loop, and after half a minute at the latest.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace quillmark {

// Beside this program, else wherever the desktop finds it.
std::string hostProgram();

struct HostAnswer {
    int status = -1; // the exit status; -1 when it could not be run, or took too long
    std::string output = {};
    std::string error = {};
};

// Why it did not do what it was asked: in its own words, without its name in front.
std::string problemOf(const HostAnswer& answer);

void runHost(const std::vector<std::string>& arguments, std::function<void(const HostAnswer&)> done = {});

} // namespace quillmark
