#include "testing/desktop/scripted_elements.h"

#include <algorithm>

namespace testbed {

namespace {

std::vector<std::string> start(const std::vector<std::string>& options, const std::string& script) {
    std::vector<std::string> command{QUILLMARK_AT_SPI_PROGRAM};
    command.insert(command.end(), options.begin(), options.end());
    command.push_back(script);
    return command;
}

} // namespace

ScriptedElements::ScriptedElements(Desktop& desktop, const std::vector<std::string>& options,
                                   const std::string& script)
    : DrivenProgram(start(options, script)) {
    if (std::ranges::find(options, "title=none") == options.end()) awaitInFront(desktop);
}

} // namespace testbed
