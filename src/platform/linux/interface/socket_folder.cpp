#include "platform/linux/interface/socket_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view namePrefix = "quillmark-host.";
constexpr std::string_view socketName = "/engine";

FileDescriptor openFolder(const std::string& path) {
    return FileDescriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

void remove(const std::string& folder) {
    unlink((folder + std::string(socketName)).c_str());
    rmdir(folder.c_str());
}

// A folder that no host holds the lock of is left behind. Another host may be about to lock one without a
// socket.
void removeIfLeftBehind(const std::string& path) {
    const FileDescriptor folder = openFolder(path);
    if (!folder || flock(folder.number(), LOCK_EX | LOCK_NB) != 0) return;
    if (unlink((path + std::string(socketName)).c_str()) == 0) rmdir(path.c_str());
}

void removeLeftBehind(const std::string& base) {
    std::error_code unreadable;
    for (auto entry = fs::directory_iterator(base, unreadable);
         !unreadable && entry != fs::directory_iterator(); entry.increment(unreadable)) {
        if (entry->path().filename().string().starts_with(namePrefix))
            removeIfLeftBehind(entry->path().string());
    }
}

std::vector<std::string> candidates() {
    std::vector<std::string> folders;
    if (const char* runtime = std::getenv("XDG_RUNTIME_DIR"); runtime && *runtime)
        folders.emplace_back(runtime);
    std::error_code missing;
    if (const auto temporary = fs::temp_directory_path(missing); !missing)
        folders.push_back(temporary.string());
    return folders;
}

} // namespace

std::optional<SocketFolder> SocketFolder::create(std::string& whyNot) {
    for (const std::string& base : candidates()) {
        std::string path = base + "/" + std::string(namePrefix) + "XXXXXX";
        if (path.size() + socketName.size() >= sizeof(sockaddr_un::sun_path)) {
            whyNot = base + ": its name is too long for a socket";
        } else if (removeLeftBehind(base); mkdtemp(path.data()) == nullptr) {
            whyNot = base + ": " + std::generic_category().message(errno);
        } else {
            FileDescriptor lock = openFolder(path);
            if (lock) flock(lock.number(), LOCK_EX);
            return SocketFolder(std::move(path), std::move(lock));
        }
    }
    return std::nullopt;
}

SocketFolder::SocketFolder(std::string path, FileDescriptor lock)
    : path_(std::move(path)), lock_(std::move(lock)),
      endHook_(std::make_unique<EndHook>([path = path_] { remove(path); })) {}

SocketFolder::~SocketFolder() {
    if (lock_) remove(path_);
}

std::string SocketFolder::socketPath() const { return path_ + std::string(socketName); }

} // namespace platform
