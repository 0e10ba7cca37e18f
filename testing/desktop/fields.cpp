#include "testing/desktop/fields.h"

#include <stdexcept>

namespace testbed {

namespace {

std::vector<std::string> start(const std::vector<std::string>& fields, const std::string& title) {
    std::vector<std::string> command{QUILLMARK_FIELDS_PROGRAM, "--title", title};
    command.insert(command.end(), fields.begin(), fields.end());
    return command;
}

} // namespace

Fields::Fields(Desktop& desktop, const std::vector<std::string>& fields, const std::string& title)
    : process_(start(fields, title)) {
    while (nextLine() != "ready") {
    }
    if (fields.front() == "--into") return; // a view inside another program's window has none of its own
    // Not asked for: metacity would take the request for the user's latest wish when it gets to it, and
    // refuse a window that the host shows meanwhile.
    const bool inFront = waitUntil([&] {
        const auto own = desktop.windows(process_.pid());
        return !own.empty() && desktop.activeWindow() == own.front();
    });
    if (!inFront) throw std::runtime_error("The program with fields does not come to the front.");
}

std::string Fields::command(const std::string& line) {
    process_.writeLine(line);
    return nextLine();
}

Clock::time_point Fields::awaitText(const std::string& text) {
    return Clock::time_point(std::chrono::nanoseconds(std::stoll(command("await 0 " + text))));
}

std::string Fields::nextLine() {
    std::string output;
    std::size_t end = std::string::npos;
    const bool came = waitUntil([&] {
        output = process_.output();
        end = output.find('\n', read_);
        return end != std::string::npos;
    });
    if (!came) throw std::runtime_error("The program with fields is silent. It printed: " + output);
    std::string line = output.substr(read_, end - read_);
    read_ = end + 1;
    return line;
}

} // namespace testbed
