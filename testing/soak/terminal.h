// A terminal with a program in it that nobody types into.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/process.h"
#include "testing/desktop/temporary_folder.h"

#include <string>
#include <vector>

namespace soak {

class Terminal {
public:
    explicit Terminal(testbed::Desktop& desktop);

    testbed::WindowId window();
    void bringToFront();
    // What it was given to read, and whether it was interrupted.
    std::vector<std::string> faults();

private:
    testbed::Desktop& desktop_;
    testbed::TemporaryFolder folder_;
    testbed::Process process_;
};

} // namespace soak
