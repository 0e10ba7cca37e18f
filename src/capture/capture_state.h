// Where the last captured text came from: written by capture, compared by paste-back. A plain record.
#pragma once

#include "platform/accessibility.h"
#include "platform/running_application.h"

#include <optional>
#include <string>

struct CaptureState {
    std::optional<platform::RunningApplication> sourceApp;
    platform::AXUIElementRef element;         // the focused element that was read; null when none was
    platform::AXUIElementRef sourceWindow;    // the window that held it; null when unknown
    std::optional<std::string> originalValue; // the whole value, untrimmed and not shortened
    std::optional<std::string> originalSelection;
    std::optional<platform::CFRange> originalRange;
    std::string captureToken; // empty, or the token that a paste into the field must bring back
    bool replaceAll = false;  // the captured text was the whole field, so a paste replaces the whole field
};
