#include "platform/linux/base/trace.h"

#include <array>
#include <atomic>
#include <cstdio>

namespace platform::trace {
namespace {

using Clock = std::chrono::steady_clock;

std::atomic<Detail> current = Detail::none;
Clock::time_point started;

} // namespace

void start(Detail detail) {
    started = Clock::now();
    current = detail;
}

bool isOn() { return current != Detail::none; }

bool showsTexts() { return current == Detail::texts; }

void write(std::string_view words) {
    if (!isOn()) return;
    const std::chrono::duration<double> time = Clock::now() - started;
    // One call, so that lines of several threads do not mix.
    std::fprintf(stderr, "%10.4f  %.*s\n", time.count(), static_cast<int>(words.size()), words.data());
}

std::string since(Clock::time_point start) {
    const std::chrono::duration<double, std::milli> time = Clock::now() - start;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f ms", time.count());
    return text.data();
}

} // namespace platform::trace
