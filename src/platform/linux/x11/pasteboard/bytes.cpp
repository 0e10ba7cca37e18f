#include "platform/linux/x11/pasteboard/bytes.h"

#include <cstring>
#include <utility>

namespace platform::selection {

Bytes& Bytes::operator=(Bytes&& other) noexcept {
    wipe();
    bytes_ = std::exchange(other.bytes_, {});
    return *this;
}

void Bytes::wipe() {
    if (!bytes_.empty()) explicit_bzero(bytes_.data(), bytes_.size());
}

} // namespace platform::selection
