#include "platform/linux/base/environment.h"

#include <cstdlib>

namespace platform {

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace platform
