#pragma once

#include "platform/linux/base/trace.h"

#include <string>
#include <vector>

namespace platform {

// What the host was asked for on its command line.
struct CommandLine {
    enum class Wish { run, help, version, languageModel, unclear };

    Wish wish = Wish::run;
    trace::Detail trace = trace::Detail::none;
    std::vector<std::string> interface;     // the interface's program and its arguments; empty: the usual one
    std::vector<std::string> languageModel; // what follows --language-model
    std::string problem;                    // what is unclear, and what to do
};

CommandLine readCommandLine(const std::vector<std::string>& arguments);

std::string helpText();
std::string versionText();

} // namespace platform
