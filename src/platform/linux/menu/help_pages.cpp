#include "platform/linux/menu/help_pages.h"

#include "platform/workspace.h"

#include <filesystem>
#include <system_error>

namespace platform {
namespace {

namespace fs = std::filesystem;

// Empty when there is none.
fs::path helpPage() {
    std::error_code missing;
    const auto folder = fs::read_symlink("/proc/self/exe", missing).parent_path();
    for (const auto& place : {folder.parent_path(), folder}) {
        // By its own name: a browser may be kept from following links out of a folder.
        auto page = fs::canonical(place / "share/doc/quillmark-host/docs/help.html", missing);
        if (!page.empty()) return page;
    }
    return {};
}

} // namespace

bool hasHelpPages() { return !helpPage().empty(); }

void showHelpPages() {
    if (!Workspace::sharedWorkspace().openURL(URL::fileURLWithPath(helpPage().string()))) beep();
}

} // namespace platform
