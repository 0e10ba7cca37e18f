#include "client/connection.h"

#include <poll.h>
#include <sys/epoll.h>
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
    : socket_(socket), wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), ready_(epoll_create1(EPOLL_CLOEXEC)),
      messenger_([this](std::vector<std::uint8_t> bytes) { write(std::move(bytes)); }) {
    watch(EPOLL_CTL_ADD);
    epoll_event wakeUp{.events = EPOLLIN, .data = {.fd = wakeUp_}};
    epoll_ctl(ready_, EPOLL_CTL_ADD, wakeUp_, &wakeUp);
}

Connection::~Connection() {
    close(ready_);
    close(socket_);
    close(wakeUp_);
}

void Connection::run() {
    while (!stopped_) {
        pollfd ready{ready_, POLLIN, 0};
        if (poll(&ready, 1, -1) < 0 && errno != EINTR)
            throw ConnectionError(std::string("The connection to the host broke: ") + std::strerror(errno) +
                                  ".");
        if (!turn()) return;
    }
}

bool Connection::turn() {
    std::array<epoll_event, 2> ready{};
    const int count = epoll_wait(ready_, ready.data(), ready.size(), 0);
    bool open = true;
    for (int i = 0; i < count; ++i) {
        const auto& event = ready.at(static_cast<std::size_t>(i));
        if (event.data.fd == wakeUp_) {
            work();
            continue;
        }
        if ((event.events & EPOLLOUT) != 0) flush();
        if ((event.events & (EPOLLIN | EPOLLHUP | EPOLLERR)) != 0) open = receive();
    }
    return open;
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
    watch(EPOLL_CTL_MOD);
}

void Connection::watch(int operation) {
    epoll_event event{.events = EPOLLIN, .data = {.fd = socket_}};
    if (!outgoing_.empty()) event.events |= EPOLLOUT;
    epoll_ctl(ready_, operation, socket_, &event);
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
