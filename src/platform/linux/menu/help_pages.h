#pragma once

#include <string>

namespace platform {

// The help that comes with the program: share/doc/quillmark-host/docs/help.html, beside the folder of the
// program as it is installed, or in it as it is built.
bool hasHelpPages();

// Each opens with the user's default program; where there is none, a notice says where to look.
void showHelpPages();
void showSite(const std::string& address);

} // namespace platform
