#pragma once

#include <optional>
#include <string>

namespace platform {

// Tells backup programs to leave a file or directory out, or takes that back. Two marks: the attribute
// `user.xdg.robots.backup` on anything, and in a directory the tag file that borg, restic and tar look for
// (https://bford.info/cachedir/). A directory on a file system without attributes counts as marked by its
// tag alone. Absent on success, else one sentence with the system's reason.
std::optional<std::string> markExcludedFromBackup(const std::string& path, bool excluded);

} // namespace platform
