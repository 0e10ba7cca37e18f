#include "platform/linux/menu/help_pages.h"

#include "platform/linux/base/data_files.h"
#include "platform/linux/window/notice.h"
#include "platform/workspace.h"

#include <filesystem>

namespace platform {
namespace {

// Empty when there is none. By its own name: a browser may be kept from following links out of a folder.
std::filesystem::path helpPage() { return dataFile("doc/quillmark-host/docs/help.html"); }

} // namespace

bool hasHelpPages() { return !helpPage().empty(); }

void showHelpPages() {
    const std::string page = helpPage().string();
    if (!Workspace::sharedWorkspace().openURL(URL::fileURLWithPath(page)))
        showNotice("No program opens the help", "Open this file with a web browser: " + page);
}

void showSite(const std::string& address) {
    const auto link = URL::URLWithString(address);
    if (!link || !Workspace::sharedWorkspace().openURL(*link))
        showNotice("No program opens web pages", "The address of the site is " + address);
}

} // namespace platform
