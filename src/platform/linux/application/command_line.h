#pragma once

#include "platform/linux/base/trace.h"
#include "platform/linux/x11/instance/request.h"

#include <string>
#include <vector>

namespace platform {

// What the program was asked for on its command line.
struct CommandLine {
    enum class Wish { run, ask, check, languageModel, help, version, unclear };

    Wish wish = Wish::run;
    InstanceRequest request{}; // of the host that runs already, with Wish::ask
    bool background = false;   // start without showing the window
    bool dialogs = false;      // say in dialogs what goes wrong
    bool json = false;         // what --check finds, for a program
    trace::Detail trace = trace::Detail::none;
    std::string sessionClientId;            // as the session's manager knew an earlier run; else empty
    std::vector<std::string> interface;     // the interface's program and its arguments; empty: the usual one
    std::vector<std::string> languageModel; // what follows --language-model
    std::string problem;                    // what is unclear, and what to do
};

CommandLine readCommandLine(const std::vector<std::string>& arguments);

// The command line that starts the program the same way again, in the background.
std::vector<std::string> restartCommand(const std::string& program, const CommandLine& line);

std::string helpText();
std::string versionText();

} // namespace platform
