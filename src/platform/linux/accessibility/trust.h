#pragma once

#include <string>

namespace platform {

// Connects to the accessibility bus, has programs show their elements and tell of focus changes for as long
// as the host lives. Main thread, once, at the host's start: programs that start later rely on it (a
// Chromium that started before never shows its elements). Without it, the first accessibility call connects.
//
// False when there is no accessibility; `whyNot` is then a sentence for the person that says what to do. The
// program does not start without it; should it be lost later, accessibility calls fail until it is back.
bool startAccessibility(std::string& whyNot);

} // namespace platform
