#pragma once

#include "platform/workspace.h"
#include "testing/desktop/key_window.h"
#include "testing/desktop/wait.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>

namespace platform {

// A window of the test's own process, the host's therefore, in front as the host itself sees it.
struct FrontKeyWindow : testbed::KeyWindow {
    explicit FrontKeyWindow(const char* windowClass = "editor") : KeyWindow(windowClass) { awaitFront(); }

    void bringToFront() {
        takeFocus();
        awaitFront();
    }

private:
    static void awaitFront() {
        EXPECT_TRUE(testbed::waitUntil([] {
            return Workspace::sharedWorkspace().frontmostApplication() ==
                   RunningApplication::currentApplication();
        }));
    }
};

// Runs a program and waits for it; true when it answers 0.
inline bool run(const std::string& command) { return std::system(command.c_str()) == 0; }

} // namespace platform
