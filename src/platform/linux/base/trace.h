#pragma once

#include <chrono>
#include <string>
#include <string_view>

// What the host says and asks, a line each on standard error, for whoever writes an interface or looks for
// what is slow. Off unless the host was started with --trace. Any thread.
namespace platform::trace {

enum class Detail {
    none,
    words, // everything but the texts of the user
    texts, // those too
};

// Once, before the first line.
void start(Detail detail);

bool isOn();
bool showsTexts();

// Writes a line that begins with the time since start(), in seconds.
void write(std::string_view words);

// "3.1 ms", the time since `start`.
std::string since(std::chrono::steady_clock::time_point start);

} // namespace platform::trace
