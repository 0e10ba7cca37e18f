#include "platform/uuid.h"

#include "platform/simulated/world.h"

namespace platform {

std::string UUIDString() {
    static constexpr char hex[] = "0123456789ABCDEF";
    auto& random = simulated::World::current().random;
    std::string text = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    for (char& c : text) {
        if (c == 'x') c = hex[random() & 15];
        if (c == 'y') c = hex[8 | (random() & 3)];
    }
    return text;
}

} // namespace platform
