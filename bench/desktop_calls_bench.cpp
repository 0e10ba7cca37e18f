// Each call of the desktop channel on a real desktop: from the bytes sent to the answer at the interface.
#include "rig/desktop.h"
#include "rig/host.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using flutter::EncodableMap;
using flutter::EncodableValue;
using rig::Clock;

constexpr std::size_t rounds = 200;

// Waits on the socket itself: the tests' patient look every few milliseconds would be what is measured.
double milliseconds(rig::Host& host, const std::string& method, const EncodableValue& arguments) {
    const auto start = Clock::now();
    const auto call = host.startCall(method, arguments);
    host.awaitBytes();
    host.answer(call);
    return std::chrono::duration<double, std::milli>(host.received().back().at - start).count();
}

void time(rig::Host& host, const std::string& method, const EncodableValue& arguments) {
    std::vector<double> times;
    while (times.size() < rounds)
        times.push_back(milliseconds(host, method, arguments));
    std::ranges::sort(times);
    std::printf("%-22s median %6.3f ms   99 of 100 %6.3f ms\n", method.c_str(), times[rounds / 2],
                times[rounds * 99 / 100]);
    std::fflush(stdout);
}

} // namespace

int main() {
    try {
        rig::Desktop desktop;
        rig::Host host;
        rig::TemporaryFolder folder;
        host.bringToFront(desktop);
        time(host, "noSuchMethod", {}); // the way there and back alone
        time(host, "initialize", EncodableMap{});
        time(host, "show", {});
        time(host, "pin", true);
        time(host, "growHeight", 1.0);
        time(host, "localize", EncodableMap{{"nativeEdit", "편집"}, {"nativeView", "보기"}});
        time(host, "cancelQuit", {});
        time(host, "openUrl", "http://refused.example/");
        time(host, "openPath", (folder / "gone").string());
        time(host, "excludeModelBackups", (folder / "").string());
        time(host, "requestPermission", {});
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "desktop_calls_bench: %s\n", problem.what());
        return 1;
    }
}
