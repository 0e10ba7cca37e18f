// A model server on loopback that answers as the test has it. Every connection is served on a thread of its
// own.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
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
    // Waits until the other end closes; false when it has not in ten seconds.
    bool waitForClose() const;

private:
    int socket_;
};

class ScriptedServer {
public:
    using Chat = std::function<void(Connection&)>;

    // Answers the probes as a server with one model "m", unless told otherwise, and completions with `chat`.
    explicit ScriptedServer(Chat chat, int healthStatus = 200,
                            std::string models = R"({"data":[{"id":"m"}]})");
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    std::uint16_t port() const { return port_; }

private:
    void serve(int socket) const;

    Chat chat_;
    int healthStatus_;
    std::string models_;
    int listener_;
    std::uint16_t port_ = 0;
    std::vector<std::thread> connections_;
    std::thread acceptor_;
};
