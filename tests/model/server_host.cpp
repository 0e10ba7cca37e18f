#include "model/server_host.h"

#include <chrono>
#include <cstdlib>

using namespace std::chrono_literals;

ServerHost::ServerHost() {
    setenv("QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "1", 1);
    choose(server.url());
}

ServerHost::~ServerHost() {
    for (const char* name :
         {"QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT", "OPENAI_BASE_URL", "OPENAI_MODEL", "OLLAMA_HOST"})
        unsetenv(name);
}

void ServerHost::choose(const std::string& url, const std::string& model) {
    setenv("OPENAI_BASE_URL", url.c_str(), 1);
    setenv("OPENAI_MODEL", model.c_str(), 1);
}

void ServerHost::lookForOneAt(std::uint16_t port) {
    choose("");
    setenv("OLLAMA_HOST", ("127.0.0.1:" + std::to_string(port)).c_str(), 1);
}

std::vector<std::string> ServerHost::answerTo(Chat chat, const std::string& prompt) {
    server.become({.chat = std::move(chat)});
    respond("a", prompt);
    return allEvents();
}

Chat sends(std::string bytes) {
    return [bytes = std::move(bytes)](ClientConnection& connection) { connection.send(bytes); };
}

Chat writes(std::string bytes) {
    return [bytes = std::move(bytes)](ClientConnection& connection) {
        connection.head(200);
        connection.text("a");
        connection.send(bytes);
    };
}

Chat repeats(std::string bytes, std::string piece) {
    return [bytes = std::move(bytes), piece = std::move(piece)](ClientConnection& connection) {
        connection.send(bytes);
        const auto start = std::chrono::steady_clock::now();
        bool closed = false;
        while (!(closed = connection.waitForClose(1ms)) && std::chrono::steady_clock::now() - start < 5s)
            connection.send(piece);
        EXPECT_TRUE(closed);
    };
}

void saysNothing(ClientConnection& connection) { connection.waitForClose(); }

std::string finish(const std::string& reason) {
    return R"(data: {"choices":[{"delta":{},"finish_reason":")" + reason + "\"}]}\n\n";
}
