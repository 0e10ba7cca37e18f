#pragma once

#include "platform/linux/base/end_hooks.h"
#include "platform/linux/base/file_descriptor.h"

#include <memory>
#include <optional>
#include <string>

namespace platform {

// A new folder that only this user can enter, for the host's one socket. Removed with the object. A host that
// was killed leaves its folder behind; the next host removes it.
class SocketFolder {
public:
    // In $XDG_RUNTIME_DIR, else in the temporary folder. Absent, with the reason in `whyNot`, when it can be
    // made in neither.
    static std::optional<SocketFolder> create(std::string& whyNot);

    ~SocketFolder();
    SocketFolder(SocketFolder&&) = default;
    SocketFolder& operator=(SocketFolder&&) = delete;

    std::string socketPath() const;

private:
    SocketFolder(std::string path, FileDescriptor lock);

    std::string path_;
    FileDescriptor lock_; // locked as long as the folder is in use; the system unlocks it with the process
    std::unique_ptr<EndHook> endHook_; // removes the folder when no destructor runs
};

} // namespace platform
