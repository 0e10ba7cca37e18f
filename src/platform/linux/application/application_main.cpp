#include "platform/application.h"
#include "platform/linux/application/command_line.h"
#include "platform/linux/application/exit_status.h"
#include "platform/linux/application/report.h"
#include "platform/linux/application/running_host.h"
#include "platform/linux/application/start.h"
#include "platform/linux/base/environment.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/linux/checks/checks.h"
#include "platform/models/language_model_command.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace platform {
namespace {

// GIO, and with it the panels and menus of most desktops, says which process it started from a desktop entry.
bool wasStartedFromDesktopEntry() {
    return environmentVariable("GIO_LAUNCHED_DESKTOP_FILE_PID") == std::to_string(getpid());
}

int check(const CommandLine& line) {
    const auto findings = checkDesktop(line.interface);
    std::cout << (line.json ? inJson(findings) : inWords(findings));
    switch (worst(findings)) {
    case Finding::Grade::good:
        return 0;
    case Finding::Grade::degraded:
        return somethingDegraded;
    case Finding::Grade::missing:
        break;
    }
    return somethingMissing;
}

} // namespace

int ApplicationMain(int argc, char** argv, const std::function<MainInterface()>& load) {
    const auto line = readCommandLine({argv + std::min(argc, 1), argv + argc});
    const Report report(line.dialogs || wasStartedFromDesktopEntry());
    switch (line.wish) {
    case CommandLine::Wish::help:
        std::cout << helpText();
        return 0;
    case CommandLine::Wish::version:
        std::cout << versionText();
        return 0;
    case CommandLine::Wish::languageModel:
        return languageModelCommand(line.languageModel);
    case CommandLine::Wish::unclear:
        printMessage(line.problem);
        return unclearCommand;
    case CommandLine::Wish::ask:
        return askRunningHost(line, report);
    case CommandLine::Wish::check:
        return check(line);
    case CommandLine::Wish::run:
        break;
    }
    trace::start(line.trace);
    return startHost(line, report, argv, load);
}

} // namespace platform
