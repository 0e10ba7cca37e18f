#include "testing/model_server/scripted_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

void ClientConnection::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
}

void ClientConnection::head(int status) const {
    send("HTTP/1.1 " + std::to_string(status) + " X\r\nContent-Type: text/event-stream\r\n\r\n");
}

void ClientConnection::text(const std::string& piece) const {
    send(R"(data: {"choices":[{"delta":{"content":")" + piece + "\"}}]}\n\n");
}

bool ClientConnection::waitForClose(std::chrono::milliseconds atMost) const {
    pollfd closed{socket_, POLLIN, 0};
    return poll(&closed, 1, static_cast<int>(atMost.count())) == 1;
}

ScriptedServer::ScriptedServer(ServerBehaviour behaviour)
    : behaviour_(std::move(behaviour)), listener_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener_, 64) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        std::abort();
    port_ = ntohs(address.sin_port);
    acceptor_ = std::jthread([this] {
        for (int accepted; (accepted = accept(listener_, nullptr, nullptr)) >= 0;)
            connections_.emplace_back([this, accepted] { serve(accepted); });
    });
}

ScriptedServer::~ScriptedServer() {
    shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    close(listener_);
}

void ScriptedServer::become(ServerBehaviour behaviour) {
    const std::lock_guard lock(mutex_);
    behaviour_ = std::move(behaviour);
}

void ScriptedServer::serve(int socket) {
    const ServerBehaviour behaviour = [&] {
        const std::lock_guard lock(mutex_);
        return behaviour_;
    }();
    ClientConnection connection(socket);
    std::array<char, 4096> buffer;
    const auto complete = [&] {
        const auto headEnd = connection.request.find("\r\n\r\n");
        if (headEnd == std::string::npos) return false;
        const auto length = connection.request.find("Content-Length: ");
        const auto body =
            length < headEnd ? std::strtoul(connection.request.c_str() + length + 16, nullptr, 10) : 0;
        return connection.request.size() >= headEnd + 4 + body;
    };
    for (ssize_t got = 1; got > 0 && !complete();) {
        got = recv(socket, buffer.data(), buffer.size(), 0);
        if (got > 0) connection.request.append(buffer.data(), static_cast<std::size_t>(got));
        // The first byte of a TLS connection, which a server without encryption ends.
        if (connection.request.starts_with('\x16')) break;
    }
    if (connection.request.starts_with("POST /v1/chat/completions ")) {
        if (behaviour.chat) behaviour.chat(connection);
    } else if (behaviour.probe) {
        behaviour.probe(connection);
    } else if (connection.request.starts_with("GET /health")) {
        connection.head(behaviour.health);
        connection.send(R"({"error":{"message":"Loading model","code":503}})");
    } else if (connection.request.starts_with("GET /v1/models")) {
        connection.head(200);
        connection.send(behaviour.models);
    } else if (connection.request.starts_with("GET /api/tags")) {
        connection.head(behaviour.tags.empty() ? 404 : 200);
        connection.send(behaviour.tags);
    } else if (connection.request.starts_with("POST /api/show")) {
        connection.head(behaviour.show.empty() ? 404 : 200);
        connection.send(behaviour.show);
    }
    close(socket);
}
