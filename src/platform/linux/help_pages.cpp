#include "platform/linux/help_pages.h"

#include "platform/workspace.h"

#include <filesystem>
#include <system_error>

namespace platform {
namespace {

namespace fs = std::filesystem;

fs::path guide() {
    std::error_code unknown;
    const auto program = fs::read_symlink("/proc/self/exe", unknown);
    return program.parent_path().parent_path() / "share/doc/quillmark-host/README.md";
}

} // namespace

bool hasHelpPages() {
    std::error_code missing;
    return fs::is_regular_file(guide(), missing);
}

void showHelpPages() { Workspace::sharedWorkspace().openURL(URL::fileURLWithPath(guide().string())); }

} // namespace platform
