#include "platform/linux/checks/files_check.h"

#include "platform/linux/interface/socket_folder.h"
#include "platform/linux/window/frame_store.h"
#include "platform/settings_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

namespace platform {
namespace {

namespace fs = std::filesystem;
using Grade = Finding::Grade;

// The folder, or where it would be made.
fs::path existingPart(fs::path folder) {
    std::error_code unreadable;
    while (!fs::exists(folder, unreadable) && folder.has_relative_path())
        folder = folder.parent_path();
    return folder;
}

// Absent when only this user can write there.
std::optional<Finding> problemWith(const fs::path& folder, const std::string& what) {
    const fs::path part = existingPart(folder);
    if (access(part.c_str(), W_OK | X_OK) != 0)
        return Finding{"files", Grade::degraded, folder.string() + " cannot be written to",
                       what + " are not kept.",
                       "Make " + part.string() + " a folder of yours: chown, then chmod u+rwx."};
    struct stat state {};
    if (part == folder && stat(part.c_str(), &state) == 0 && (state.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return Finding{"files", Grade::degraded, folder.string() + " can be written to by others",
                       "Other users of this computer can change " + what + ".",
                       "Run: chmod go-w " + folder.string()};
    return std::nullopt;
}

} // namespace

Finding checkFiles() {
    std::string whyNot;
    if (!SocketFolder::create(whyNot))
        return {"files", Grade::missing, "no folder for the socket: " + whyNot,
                "The interface cannot reach the host.",
                "Set XDG_RUNTIME_DIR to a folder of yours with a short name."};
    const fs::path settings = settingsFolder(), state = windowFrameFolder();
    if (auto problem = problemWith(settings, "settings")) return *problem;
    if (auto problem = problemWith(state, "the window's place and size")) return *problem;
    return {"files", Grade::good, settings.string() + ", " + state.string(), "", ""};
}

} // namespace platform
