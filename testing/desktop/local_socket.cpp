#include "testing/desktop/local_socket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace testbed {

int connectTo(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return socket;
    close(socket);
    return -1;
}

} // namespace testbed
