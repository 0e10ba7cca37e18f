#include "testing/desktop/fields.h"

namespace testbed {

namespace {

std::vector<std::string> start(const std::vector<std::string>& fields, const std::string& title) {
    std::vector<std::string> command{QUILLMARK_FIELDS_PROGRAM, "--title", title};
    command.insert(command.end(), fields.begin(), fields.end());
    return command;
}

} // namespace

Fields::Fields(Desktop& desktop, const std::vector<std::string>& fields, const std::string& title,
               const std::map<std::string, std::string>& environment)
    : DrivenProgram(start(fields, title), environment) {
    // A view inside another program's window has none of its own.
    if (fields.front() != "--into") awaitInFront(desktop);
}

Clock::time_point Fields::awaitText(const std::string& text) {
    return Clock::time_point(std::chrono::nanoseconds(std::stoll(command("await 0 " + text))));
}

} // namespace testbed
