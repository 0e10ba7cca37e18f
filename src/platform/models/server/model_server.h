#pragma once

#include "platform/models/settings/server_address.h"

#include <string>
#include <vector>

namespace platform {

// A server that may be asked. Plain values, here and below.
struct ModelServer {
    ServerAddress address;
    std::string key = {};         // empty: none
    std::string wantedModel = {}; // empty: the first of its models that can answer
    bool isChosen = false;        // by the user; else it is one that was looked for
    bool thinking = false;        // whether the model may think before it writes

    bool operator==(const ModelServer&) const = default;
};

// How a request tells the server's program that the model should not think first.
enum class ThinkingSwitch {
    none,
    chatTemplate,    // llama-server's and vLLM's "chat_template_kwargs"
    reasoningEffort, // Ollama's "reasoning_effort"
};

// A server that can answer, and what to ask it for.
struct ServedModel {
    ModelServer server;
    // The model, then those to ask for when it turns out that it cannot answer. Empty: the server does not
    // say what it has, and is asked for none by name.
    std::vector<std::string> models = {};
    ThinkingSwitch thinkingSwitch = ThinkingSwitch::none;
};

// What is known of a server.
struct ServerState {
    enum class Kind {
        ready,
        notReady, // a model server that is loading, or has no model that can answer
        silent,   // takes connections and says nothing in time: it may be busy, or no model server
        absent,   // no model server, or none that can be used
    };

    Kind kind = Kind::absent;
    ServedModel served = {};   // when ready
    std::string sentence = {}; // else, for the person: why not, and what to do
    bool mayChange = false;    // an answer is still to come
};

} // namespace platform
