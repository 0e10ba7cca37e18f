// A program that a test drives by lines: each command is answered by one line.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/process.h"

#include <map>
#include <string>
#include <vector>

namespace testbed {

class DrivenProgram {
public:
    // Returns once the program has printed "ready".
    explicit DrivenProgram(const std::vector<std::string>& command,
                           const std::map<std::string, std::string>& environment = {});

    Process& process() { return process_; }
    const Process& process() const { return process_; }

    // Sends one command and returns the program's answer to it.
    std::string command(const std::string& line);

    // Waits until the window manager says that the program's window is in front: xfwm4 says so a moment after
    // the program does.
    void awaitInFront(Desktop& desktop);

private:
    std::string nextLine();

    Process process_;
    std::size_t read_ = 0;
};

} // namespace testbed
