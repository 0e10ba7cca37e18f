#include "platform/linux/base/file_descriptor.h"

#include <unistd.h>

namespace platform {

FileDescriptor::~FileDescriptor() {
    if (number_ >= 0) close(number_);
}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    // What this one held goes now, not with `other`.
    const FileDescriptor former(std::exchange(other.number_, -1));
    return *this;
}

} // namespace platform
