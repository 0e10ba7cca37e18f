#include "testing/soak/terminal.h"

#include "testing/soak/tracked_program.h"

#include <stdexcept>

namespace soak {

namespace {

const std::string started = "started\n";

// Writes down every byte that it is given, without waiting for a line, and every interruption.
std::vector<std::string> command(const std::string& file) {
    const std::string script =
        "stty raw -echo isig; trap 'echo interrupted >>\"$0\"' INT; echo started >>\"$0\"; "
        "while :; do dd bs=1 count=1 2>/dev/null | od -c >>\"$0\"; done";
    return {"xterm", "-T", "Terminal", "-e", "sh", "-c", script, file};
}

} // namespace

Terminal::Terminal(testbed::Desktop& desktop) : desktop_(desktop), process_(command(folder_ / "told")) {
    if (!testbed::waitUntil([&] { return testbed::readFile(folder_ / "told") == started; }))
        throw std::runtime_error("The terminal does not start. It printed: " + process_.output());
}

testbed::WindowId Terminal::window() {
    std::vector<testbed::WindowId> own;
    if (!testbed::waitUntil([&] { return !(own = desktop_.windows(process_.pid())).empty(); }))
        throw std::runtime_error("The terminal has no window.");
    return own.front();
}

void Terminal::bringToFront() {
    if (!goTo(desktop_, window())) throw std::runtime_error("The terminal does not come to the front.");
}

std::vector<std::string> Terminal::faults() {
    const std::string told = testbed::readFile(folder_ / "told");
    if (told == started) return {};
    testbed::writeFile(folder_ / "told", started);
    return {"the program in the terminal was told: " + told.substr(started.size())};
}

} // namespace soak
