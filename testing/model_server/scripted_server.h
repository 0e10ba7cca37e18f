// A model server on loopback that answers as the test has it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

// One connection, whose request has been read.
class Connection {
public:
    explicit Connection(int socket) : socket_(socket) {}

    std::string request;

    void send(std::string_view bytes) const;
    // The head of an answer that lasts until the connection ends.
    void head(int status) const;
    // One server-sent event with a piece of text.
    void text(const std::string& piece) const;
    // Whether the other end closes in that time.
    bool waitForClose(std::chrono::milliseconds atMost = std::chrono::seconds(10)) const;

private:
    int socket_;
};

struct ServerBehaviour {
    // Answers a completion.
    std::function<void(Connection&)> chat = {};
    // The answers to the probes: as a server with one model "m".
    int health = 200;
    std::string models = R"({"data":[{"id":"m"}]})";
    // Answers the probes in another way.
    std::function<void(Connection&)> probe = {};
};

// Every connection is served on a thread of its own.
class ScriptedServer {
public:
    explicit ScriptedServer(ServerBehaviour behaviour = {});
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    // From the next connection on.
    void become(ServerBehaviour behaviour);
    std::uint16_t port() const { return port_; }

private:
    void serve(int socket);

    std::mutex mutex_;
    ServerBehaviour behaviour_;
    int listener_;
    std::uint16_t port_ = 0;
    std::vector<std::jthread> connections_;
    std::jthread acceptor_;
};
