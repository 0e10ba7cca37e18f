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
class ClientConnection {
public:
    explicit ClientConnection(int socket) : socket_(socket) {}

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
    std::function<void(ClientConnection&)> chat = {};
    // The answers to other questions: as a server with one model "m".
    int health = 200;
    std::string models = R"({"object":"list","data":[{"id":"m","object":"model"}]})";
    std::string tags = {}; // Ollama's list; empty: it has none
    std::string show = {}; // what Ollama says of each model
    // Answers them in another way.
    std::function<void(ClientConnection&)> probe = {};
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
    // The address of its interface.
    std::string url() const { return "http://127.0.0.1:" + std::to_string(port_) + "/v1"; }

private:
    void serve(int socket);

    std::mutex mutex_;
    ServerBehaviour behaviour_;
    int listener_;
    std::uint16_t port_ = 0;
    std::vector<std::jthread> connections_;
    std::jthread acceptor_;
};
