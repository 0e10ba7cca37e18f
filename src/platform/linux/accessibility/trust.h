#pragma once

#include <functional>
#include <string>

namespace platform {

// Connects to the accessibility bus, has programs show their elements and tell of focus changes for as long
// as the host lives; where there is no such bus, looks for one every few seconds. Main thread, once, at the
// host's start: programs that start later rely on it (a Chromium that started before never shows its
// elements).
//
// While there is no accessibility, the host is not trusted. Standard error says so at once. When the
// permission is asked for, `tell` gets a sentence for the person that says what to do: once.
void startAccessibility(std::function<void(const std::string& sentence)> tell);

} // namespace platform
