#include "client/connection.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

namespace quillmark {

namespace {

int connectedSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) throw ConnectionError("QUILLMARK_SOCKET is too long a path.");
    path.copy(address.sun_path, path.size());

    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket >= 0 && connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return socket;
    const std::string reason = std::strerror(errno);
    if (socket >= 0) close(socket);
    throw ConnectionError("The host does not answer at " + path + " (" + reason +
                          "). Start this program through quillmark-host.");
}

} // namespace

Connection Connection::toHost() {
    const char* path = std::getenv("QUILLMARK_SOCKET");
    if (path == nullptr || *path == '\0')
        throw ConnectionError("QUILLMARK_SOCKET is not set. Start this program through quillmark-host.");
    return Connection(connectedSocket(path));
}

Connection::Connection(int socket)
    : socket_(socket), wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      messenger_([this](std::vector<std::uint8_t> bytes) { write(std::move(bytes)); }) {}

Connection::~Connection() {
    close(socket_);
    close(wakeUp_);
}

void Connection::run() {
    while (!stopped_) {
        std::array<pollfd, 2> waiting{{{socket_, POLLIN, 0}, {wakeUp_, POLLIN, 0}}};
        auto& socket = waiting[0];
        if (!outgoing_.empty()) socket.events |= POLLOUT;
        if (poll(waiting.data(), waiting.size(), -1) < 0) {
            if (errno == EINTR) continue;
            throw ConnectionError(std::string("The connection to the host broke: ") + std::strerror(errno) +
                                  ".");
        }
        if (waiting[1].revents != 0) work();
        if ((socket.revents & POLLOUT) != 0) flush();
        if ((socket.revents & (POLLIN | POLLHUP | POLLERR)) != 0 && !receive()) return;
    }
}

void Connection::async(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    work_.push_back(std::move(work));
    eventfd_write(wakeUp_, 1);
}

void Connection::work() {
    eventfd_t count = 0;
    eventfd_read(wakeUp_, &count);
    std::unique_lock lock(mutex_);
    const auto work = std::exchange(work_, {});
    lock.unlock();
    for (const auto& piece : work)
        piece();
}

void Connection::write(std::vector<std::uint8_t> bytes) {
    outgoing_.insert(outgoing_.end(), bytes.begin(), bytes.end());
    flush();
}

// A broken connection shows at the next read, with what the host had still sent before it.
void Connection::flush() {
    const ssize_t taken = send(socket_, outgoing_.data(), outgoing_.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (taken > 0)
        outgoing_.erase(outgoing_.begin(), outgoing_.begin() + taken);
    else if (taken < 0 && errno != EAGAIN && errno != EINTR)
        outgoing_.clear();
}

// False when the host has ended the connection.
bool Connection::receive() {
    std::array<std::uint8_t, 65536> buffer;
    const ssize_t count = recv(socket_, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    if (count == 0) return false;
    if (const auto broken = messenger_.receive({buffer.data(), static_cast<std::size_t>(count)}))
        throw ConnectionError("The host does not keep to the socket's rules: " + *broken);
    return true;
}

} // namespace quillmark
