// Each call of the desktop channel on a real desktop: from the bytes sent to the answer at the interface.
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using flutter::EncodableMap;
using flutter::EncodableValue;
using testbed::Clock;

constexpr std::size_t rounds = 200;

// Waits on the socket itself: waitUntil() looks every few milliseconds only, which is longer than a call
// takes.
double milliseconds(testbed::Host& host, const std::string& method, const EncodableValue& arguments) {
    const auto start = Clock::now();
    const auto call = host.startCall(method, arguments);
    host.awaitBytes();
    host.answer(call);
    return std::chrono::duration<double, std::milli>(host.received().back().at - start).count();
}

struct Times {
    double median = 0, most = 0; // milliseconds; 99 of 100 are below `most`
};

// One call each 20 ms: what the one before has left to draw is drawn by then.
Times measured(testbed::Host& host, const std::string& method, const EncodableValue& arguments) {
    std::vector<double> times;
    while (times.size() < rounds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        times.push_back(milliseconds(host, method, arguments));
    }
    std::ranges::sort(times);
    return {times[rounds / 2], times[rounds * 99 / 100]};
}

} // namespace

int main() {
    try {
        testbed::Desktop desktop;
        testbed::Host host;
        testbed::TemporaryFolder folder;
        host.bringToFront(desktop);
        const EncodableMap labels{{"nativeEdit", "편집"}, {"nativeView", "보기"}};
        const std::pair<const char*, EncodableValue> calls[]{
            {"noSuchMethod", {}},
            {"initialize", EncodableMap{}},
            {"show", {}},
            {"pin", true},
            {"growHeight", 1.0},
            {"localize", labels},
            {"cancelQuit", {}},
            {"openUrl", "http://refused.example/"},
            {"openPath", (folder / "gone").string()},
            {"excludeModelBackups", (folder / "").string()},
            {"requestPermission", {}},
            {"hide", {}},
        };
        std::printf("%-20s %10s %14s %20s\n", "milliseconds", "median", "99 of 100", "median above bare");
        std::optional<double> bare; // a call that nobody handles: the way there and back alone
        for (const auto& [method, arguments] : calls) {
            const Times times = measured(host, method, arguments);
            if (!bare) bare = times.median;
            std::printf("%-20s %10.3f %14.3f %20.3f\n", method, times.median, times.most,
                        times.median - *bare);
            std::fflush(stdout);
        }
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "desktop_calls_bench: %s\n", problem.what());
        return 1;
    }
}
