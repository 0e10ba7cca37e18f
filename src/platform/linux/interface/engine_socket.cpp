#include "platform/linux/interface/engine_socket.h"

#include "platform/linux/base/outgoing_messages.h"
#include "platform/main_queue.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace platform {
namespace {

constexpr std::size_t mostBytesPerTurn = 64 << 10;
constexpr int priority = Glib::PRIORITY_HIGH_IDLE + 20; // GTK draws at this one: each gets its turns

FileDescriptor listenAt(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) return {};
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    const auto* generic = reinterpret_cast<const sockaddr*>(&address);
    if (!listener || bind(listener.number(), generic, sizeof(address)) != 0 ||
        ::listen(listener.number(), 1) != 0)
        return {};
    return listener;
}

bool isThisUser(const FileDescriptor& connection) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    return getsockopt(connection.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == geteuid();
}

} // namespace

std::unique_ptr<EngineSocket> EngineSocket::listen(Callbacks callbacks, std::string& whyNot) {
    auto folder = SocketFolder::create(whyNot);
    if (!folder) return nullptr;
    FileDescriptor listener = listenAt(folder->socketPath());
    if (!listener) {
        whyNot = folder->socketPath() + ": " + std::generic_category().message(errno);
        return nullptr;
    }
    return std::make_unique<EngineSocket>(std::move(callbacks), std::move(*folder), std::move(listener));
}

EngineSocket::EngineSocket(Callbacks callbacks, SocketFolder folder, FileDescriptor listener)
    : callbacks_(std::move(callbacks)), folder_(std::move(folder)), listener_(std::move(listener)),
      buffer_(mostBytesPerTurn) {
    listenerWatch_ = Glib::signal_io().connect(
        [this](Glib::IOCondition) {
            accept();
            return static_cast<bool>(listener_);
        },
        listener_.number(), Glib::IO_IN, priority);
}

EngineSocket::~EngineSocket() {
    disconnectWatches();
    setMessagesWaiting(false);
}

void EngineSocket::disconnectWatches() {
    listenerWatch_.disconnect();
    readWatch_.disconnect();
    writeWatch_.disconnect();
}

void EngineSocket::accept() {
    FileDescriptor connection(accept4(listener_.number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (!connection || !isThisUser(connection)) return;
    connection_ = std::move(connection);
    listener_ = {};
    watchForBytes();
    flushSoon();
}

// Watches for one event only; readSome() watches again once it has handled what arrived. So a flood stays in
// the socket, and the main loop serves others between two pieces.
void EngineSocket::watchForBytes() {
    readWatch_ = Glib::signal_io().connect(
        [this](Glib::IOCondition) {
            MainQueue::async(life_, [this] { readSome(); });
            return false;
        },
        connection_.number(), Glib::IO_IN | Glib::IO_HUP | Glib::IO_ERR, priority);
}

void EngineSocket::readSome() {
    if (ended_) return;
    const ssize_t count = recv(connection_.number(), buffer_.data(), buffer_.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return watchForBytes();
    if (count <= 0) return end(std::nullopt);
    const std::weak_ptr life(life_);
    auto why = callbacks_.received(std::span(buffer_.data(), static_cast<std::size_t>(count)));
    if (life.expired() || ended_) return;
    if (why) return end(std::move(why));
    watchForBytes();
}

void EngineSocket::write(std::vector<std::uint8_t> bytes) {
    if (ended_) return;
    outgoing_.append(std::move(bytes));
    setMessagesWaiting(true);
    if (connection_ && !writeWatch_.connected()) flushSoon();
}

// Queued behind the entries that already wait, so that all they write is sent with one system call.
void EngineSocket::flushSoon() {
    if (std::exchange(flushQueued_, true)) return;
    MainQueue::async(life_, [this] { flush(); });
}

void EngineSocket::flush() {
    flushQueued_ = false;
    if (ended_ || writeWatch_.connected()) return;
    switch (outgoing_.writeTo(connection_.number())) {
    case OutgoingBytes::State::broken:
        outgoing_.clear(); // readSome() finds the end of the connection
        [[fallthrough]];
    case OutgoingBytes::State::drained:
        setMessagesWaiting(false);
        break;
    case OutgoingBytes::State::waiting:
        writeWatch_ = Glib::signal_io().connect(
            [this](Glib::IOCondition) {
                flushSoon();
                return false;
            },
            connection_.number(), Glib::IO_OUT | Glib::IO_HUP | Glib::IO_ERR, priority);
    }
}

void EngineSocket::end(std::optional<std::string> why) {
    ended_ = true;
    disconnectWatches();
    outgoing_.clear();
    setMessagesWaiting(false);
    connection_ = {};
    callbacks_.ended(std::move(why));
}

void EngineSocket::close(std::chrono::milliseconds limit) {
    if (!ended_ && connection_) {
        const TimePoint deadline = now() + limit;
        while (outgoing_.writeTo(connection_.number()) == OutgoingBytes::State::waiting && now() < deadline) {
            pollfd ready{connection_.number(), POLLOUT, 0};
            poll(&ready, 1, 10);
        }
        // Closing a socket with unread bytes in it gives the peer an error (ECONNRESET) instead of the end.
        while (recv(connection_.number(), buffer_.data(), buffer_.size(), MSG_DONTWAIT) > 0 &&
               now() < deadline) {
        }
    }
    ended_ = true;
    disconnectWatches();
    listener_ = {};
    connection_ = {};
}

} // namespace platform
