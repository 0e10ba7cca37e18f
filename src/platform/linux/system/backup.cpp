// Two marks tell backup programs to leave a file or directory out: the attribute `user.xdg.robots.backup` on
// anything, and in a directory the tag file that borg, restic and tar look for
// (https://bford.info/cachedir/). A directory on a file system without attributes counts as marked by its tag
// alone.
#include "platform/linux/base/file_descriptor.h"
#include "platform/url.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

namespace platform {
namespace {

constexpr const char* attribute = "user.xdg.robots.backup";
constexpr const char* tagName = "CACHEDIR.TAG";
constexpr std::string_view signature = "Signature: 8a477f597d28d172789f06886806bc55";
constexpr std::string_view explanation =
    "\n# Backup programs leave this directory out, for what it holds can be fetched "
    "again.\n# See https://bford.info/cachedir/\n";

bool writeAll(const FileDescriptor& file, std::string_view text) {
    return write(file.number(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

bool hasTag(int folder) {
    const FileDescriptor tag(openat(folder, tagName, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    std::array<char, signature.size()> start{};
    return tag && read(tag.number(), start.data(), start.size()) == static_cast<ssize_t>(start.size()) &&
           std::string_view(start.data(), start.size()) == signature;
}

// Each of these returns the system's error number, or 0.

int setTag(int folder, bool wanted) {
    if (hasTag(folder) == wanted) return 0;
    if (!wanted) return unlinkat(folder, tagName, 0) == 0 ? 0 : errno;
    const FileDescriptor tag(
        openat(folder, tagName, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666));
    return tag && writeAll(tag, signature) && writeAll(tag, explanation) ? 0 : errno;
}

int setAttribute(int file, bool wanted) {
    if (wanted) return fsetxattr(file, attribute, "false", 5, 0) == 0 ? 0 : errno;
    return fremovexattr(file, attribute) == 0 || errno == ENODATA ? 0 : errno;
}

int mark(const std::string& path, bool excluded) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file || fstat(file.number(), &status) != 0) return errno;
    const bool isDirectory = S_ISDIR(status.st_mode);
    if (isDirectory) {
        if (const int error = setTag(file.number(), excluded)) return error;
    }
    const int error = setAttribute(file.number(), excluded);
    return error == ENOTSUP && (isDirectory || !excluded) ? 0 : error;
}

} // namespace

std::optional<std::string> URL::setExcludedFromBackup(bool excluded) const {
    const int error = mark(path_, excluded);
    if (error == 0) return std::nullopt;
    return "The backup mark of \"" + path_ +
           "\" could not be changed: " + std::generic_category().message(error) + ".";
}

} // namespace platform
