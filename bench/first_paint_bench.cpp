// How long a person waits for the window after the host has been started, and what memory the interface takes
// then; beside an empty window of the toolkit, which nothing with this toolkit can be faster than.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"

#include <gtkmm/label.h>
#include <gtkmm/main.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using testbed::Clock;

constexpr std::size_t rounds = 15;

double milliseconds(Clock::duration time) { return std::chrono::duration<double, std::milli>(time).count(); }

// Whether letters are in the middle of the window: the toolkit puts a frame on the screen as a whole.
bool isPainted(testbed::Desktop& desktop, testbed::WindowId window) {
    const auto [x, y, width, height] = desktop.place(window);
    return !desktop.isPlain({x + width / 4, y + height / 4, width / 2, height / 2});
}

// From the start of that program to the first frame of its window.
double firstPaint(testbed::Desktop& desktop, const std::vector<std::string>& command,
                  testbed::Process& program, Clock::time_point start) {
    for (; Clock::now() < start + 20s; std::this_thread::sleep_for(1ms)) {
        const auto windows = desktop.windows(program.pid());
        if (!windows.empty() && isPainted(desktop, windows.front()))
            return milliseconds(Clock::now() - start);
    }
    throw std::runtime_error("Nothing is painted by " + command.front() + ": " + program.output());
}

// Kilobytes as megabytes: "Rss" or "Pss" (what it shares with other programs counts in part).
double memory(const std::string& process, const std::string& name) {
    std::ifstream rollup("/proc/" + process + "/smaps_rollup");
    for (std::string line; std::getline(rollup, line);)
        if (line.starts_with(name + ":")) return std::strtod(line.c_str() + name.size() + 1, nullptr) / 1024;
    return 0;
}

std::string interfaceOf(const testbed::Process& host) {
    const auto pid = std::to_string(host.pid());
    std::ifstream children("/proc/" + pid + "/task/" + pid + "/children");
    std::string child;
    children >> child;
    return child;
}

void measure(const char* what, const std::vector<std::string>& command, bool isHost) {
    testbed::Desktop desktop;
    std::vector<double> times;
    double resident = 0, proportional = 0;
    while (times.size() < rounds) {
        testbed::TemporaryFolder folder;
        const auto start = Clock::now();
        testbed::Process program(
            command, {{"XDG_CONFIG_HOME", folder / "config"}, {"XDG_STATE_HOME", folder / "state"}});
        times.push_back(firstPaint(desktop, command, program, start));
        std::this_thread::sleep_for(500ms); // what it still has to do at the start
        const auto process = isHost ? interfaceOf(program) : std::to_string(program.pid());
        resident = std::max(resident, memory(process, "Rss"));
        proportional = std::max(proportional, memory(process, "Pss"));
    }
    std::ranges::sort(times);
    std::printf("  %-34s median %6.1f ms, most %6.1f ms; %5.1f MB resident, %5.1f MB proportional\n", what,
                times[rounds / 2], times.back(), resident, proportional);
}

int showEmptyWindow(int argc, char** argv) {
    setenv("GDK_GL", "disable", 0); // as the interface does
    Gtk::Main toolkit(argc, argv);
    Gtk::Window window;
    Gtk::Label letters("Nothing");
    window.set_default_size(540, 500);
    window.add(letters);
    window.show_all();
    Gtk::Main::run(window);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1) return showEmptyWindow(argc, argv);
    try {
        const auto host = testbed::hostProgram();
        const auto interface = std::filesystem::path(host).parent_path() / "quillmark-interface";
        std::printf("from the start of a program to its first frame (aims: 300 ms, 60 MB)\n");
        measure("an empty window", {argv[0], "window"}, false);
        measure("the host with its interface", {host, interface}, true);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "first_paint_bench: %s\n", error.what());
        return 1;
    }
}
