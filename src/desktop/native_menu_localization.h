// Puts the interface's labels on the native menu. Keeps no state: run it again whenever the labels or the
// full-screen state change.
#pragma once

#include "platform/menu.h"

#include <map>
#include <string>

namespace NativeMenuLocalization {

// Retitles every item, at any depth, whose identifier has a label, and its submenu with it. While the window
// is in full screen, the item "nativeFullScreen" gets the label "nativeExitFullScreen". Nothing else is
// changed.
void apply(const std::map<std::string, std::string>& labels, platform::Menu& menu, bool fullScreen);

} // namespace NativeMenuLocalization
