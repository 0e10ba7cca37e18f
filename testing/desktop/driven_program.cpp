#include "testing/desktop/driven_program.h"

#include <stdexcept>

namespace testbed {

DrivenProgram::DrivenProgram(const std::vector<std::string>& command,
                             const std::map<std::string, std::string>& environment)
    : process_(command, environment) {
    while (nextLine() != "ready") {
    }
}

std::string DrivenProgram::command(const std::string& line) {
    process_.writeLine(line);
    return nextLine();
}

void DrivenProgram::awaitInFront(Desktop& desktop) {
    // Not asked for: metacity would take the request for the user's latest wish when it gets to it, and
    // refuse a window that the host shows meanwhile.
    const bool inFront = waitUntil([&] {
        const auto own = desktop.windows(process_.pid());
        return !own.empty() && desktop.activeWindow() == own.front();
    });
    if (!inFront) throw std::runtime_error("The program does not come to the front.");
}

std::string DrivenProgram::nextLine() {
    std::string output;
    std::size_t end = std::string::npos;
    const bool came = waitUntil([&] {
        output = process_.output();
        end = output.find('\n', read_);
        return end != std::string::npos;
    });
    if (!came) throw std::runtime_error("The program is silent. It printed: " + output);
    std::string line = output.substr(read_, end - read_);
    read_ = end + 1;
    return line;
}

} // namespace testbed
