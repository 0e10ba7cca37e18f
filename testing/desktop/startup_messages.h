// What programs tell the desktop about their start, so that it stops showing that it waits for them.
#pragma once

#include <map>
#include <string>

using Display = struct _XDisplay; // Xlib's header leaves macros behind

namespace testbed {

class StartupMessages {
public:
    // Hears what is said from now on.
    StartupMessages();
    ~StartupMessages();
    StartupMessages(const StartupMessages&) = delete;
    StartupMessages& operator=(const StartupMessages&) = delete;

    // The next one, such as: remove: ID="some-start"; empty when none comes in time.
    std::string next();

private:
    ::Display* display_;
    std::map<unsigned long, std::string> parts_; // by the window that sends them
};

} // namespace testbed
