#include "platform/linux/menu/help_pages.h"

#include "platform/linux/base/data_files.h"
#include "platform/workspace.h"

#include <filesystem>

namespace platform {
namespace {

// Empty when there is none. By its own name: a browser may be kept from following links out of a folder.
std::filesystem::path helpPage() { return dataFile("doc/quillmark-host/docs/help.html"); }

} // namespace

bool hasHelpPages() { return !helpPage().empty(); }

void showHelpPages() {
    if (!Workspace::sharedWorkspace().openURL(URL::fileURLWithPath(helpPage().string()))) beep();
}

} // namespace platform
