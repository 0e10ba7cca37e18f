#pragma once

#include "platform/models/http/exchange.h"
#include "platform/models/server/model_list.h"
#include "platform/models/server/model_server.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// Finds out whether one server can answer, and with which model. Any thread.
class ServerProbe : public std::enable_shared_from_this<ServerProbe> {
public:
    // Whoever says nothing for so long is silent.
    static constexpr std::chrono::seconds silenceLimit{2};

    // `changed` is called on background threads whenever more is known. Models of these names cannot answer.
    ServerProbe(ModelServer server, std::vector<std::string> unusable, std::function<void()> changed);

    // Asks the server; close() ends that.
    void start();
    void close();

    const ModelServer& server() const { return server_; }
    ServerState state() const;

private:
    // One question to the server and what has come of it.
    struct Reply {
        bool isAsked = false;
        bool isOver = false;
        HttpEnd end = HttpEnd::complete; // once it is over, like the following
        std::string reason = {};
        unsigned status = 0;
        std::string body = {};

        bool isPending() const { return isAsked && !isOver; }
    };
    class Receiver;

    void ask(Reply& reply, const std::string& url, std::string body = {});
    void learn();
    void askForCapabilities();

    ServerState silent() const;
    ServerState stateByList() const;
    ServerState stateByModels(const std::vector<ListedModel>& usable) const;
    std::vector<ListedModel> usableModels() const;
    ThinkingSwitch thinkingSwitch(const ListedModel& model) const;
    std::optional<ServerState> loading(const Reply& reply) const;
    ServerState because(ServerState::Kind kind, const std::string& what) const;

    const ModelServer server_;
    const std::vector<std::string> unusable_;
    const std::function<void()> changed_;

    mutable std::mutex mutex_;
    bool connected_ = false;
    Reply health_; // llama-server says here that it is loading
    Reply list_;
    Reply tags_; // Ollama says here which models run elsewhere
    Reply show_; // and here what a model can do, one model after the other
    std::optional<ModelList> models_;
    bool isOllama_ = false;
    std::string shown_; // the model that was asked for last
    std::vector<std::function<void()>> closers_;
};

} // namespace platform
