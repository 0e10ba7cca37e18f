#pragma once

#include <string>

namespace platform {

// How the host speaks to whoever started it: on standard error, and in a dialog too when it was started from
// the desktop, where nobody reads that. Main thread only.
class Report {
public:
    explicit Report(bool inDialogs) : inDialogs_(inDialogs) {}

    // For what has only one next step: to close the dialog.
    void say(const std::string& sentence) const;

    // For what may be better the next time. True when the person wants to start the program again.
    bool offersStart(const std::string& sentence) const;

    // The host that runs already hangs. True when the person wants to have it ended.
    bool offersEnd(const std::string& sentence) const;

private:
    bool choosesSecond(const std::string& sentence, const std::string& second) const;

    bool inDialogs_;
};

} // namespace platform
