#pragma once

#include "platform/linux/base/end_hooks.h"
#include "platform/linux/base/file_descriptor.h"

#include <memory>
#include <optional>
#include <string>

namespace platform {

// A fresh folder that only this user can enter, for one socket; a host has one. Removed when this ends. What
// a killed host left behind is removed by the next one.
class SocketFolder {
public:
    // In $XDG_RUNTIME_DIR, else in the temporary folder. Absent, with the reason in `whyNot`, when neither
    // takes it.
    static std::optional<SocketFolder> create(std::string& whyNot);

    ~SocketFolder();
    SocketFolder(SocketFolder&&) = default;
    SocketFolder& operator=(SocketFolder&&) = delete;

    std::string socketPath() const;

private:
    SocketFolder(std::string path, FileDescriptor lock);

    std::string path_;
    FileDescriptor lock_; // held while the folder is in use; the system lets go of it with the process
    std::unique_ptr<EndHook> endHook_; // removes it all the same
};

} // namespace platform
