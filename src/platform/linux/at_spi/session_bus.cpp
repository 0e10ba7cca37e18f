#include "platform/linux/at_spi/session_bus.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform::at_spi {

std::string sessionBusAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address != nullptr && *address != '\0')
        return address;
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    const auto socket = std::filesystem::path(folder != nullptr ? folder : "/nonexistent") / "bus";
    std::error_code ignored;
    return std::filesystem::is_socket(socket, ignored) ? "unix:path=" + socket.string() : "";
}

} // namespace platform::at_spi
