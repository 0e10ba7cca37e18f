// Puts the interface's labels on the native menu. Stateless: run it again whenever the labels or the
// full-screen state change.
#pragma once

#include "platform/menu.h"

#include <map>
#include <string>

namespace NativeMenuLocalization {

// Retitles every item, at any depth, whose identifier has a label, and the submenu that opens from it. The
// full-screen toggle, "nativeFullScreen", takes the label "nativeExitFullScreen" while in full screen.
// Everything else about the items stays.
void apply(const std::map<std::string, std::string>& labels, platform::Menu& menu, bool fullScreen);

} // namespace NativeMenuLocalization
