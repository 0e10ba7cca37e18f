#include "platform/application.h"
#include "platform/linux/application/command_line.h"
#include "platform/linux/application/exit_status.h"
#include "platform/linux/application/running_host.h"
#include "platform/linux/application/start.h"
#include "platform/linux/base/terminal_message.h"
#include "platform/models/language_model_command.h"

#include <algorithm>
#include <iostream>

namespace platform {

int ApplicationMain(int argc, char** argv, const std::function<MainInterface()>& load) {
    const auto line = readCommandLine({argv + std::min(argc, 1), argv + argc});
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
        return askRunningHost(line);
    case CommandLine::Wish::run:
        break;
    }
    trace::start(line.trace);
    return startHost(line, load);
}

} // namespace platform
