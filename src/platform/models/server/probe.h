// Finds out which model server can answer at this moment.
#pragma once

#include "platform/models/server/addresses.h"

#include <chrono>
#include <string>
#include <variant>
#include <vector>

namespace platform {

// The server and the model to ask it for.
struct ServedModel {
    ModelServer server;
    std::string model;
};

// A server is up and cannot answer yet. The sentence says why and what to do.
struct ModelServerNotReady {
    std::string sentence;
};

// A server takes connections and says nothing in time, or that it cannot and no more: it may be busy with
// another answer, or no model server at all.
struct ModelServerSilent {
    ModelServer server;
    std::string sentence;
};

// No model server answers; the sentence says what came of the last one asked.
struct NoModelServer {
    std::string sentence;
};

using ModelServerState = std::variant<ServedModel, ModelServerNotReady, ModelServerSilent, NoModelServer>;

// The first that is ready, else the first that is up, else the first that is silent. Asks all of them at once
// and waits for as long as it takes to know, but never longer than the limit. Any thread but the background
// ones.
ModelServerState probeModelServers(const std::vector<ModelServer>& servers,
                                   std::chrono::milliseconds limit = std::chrono::milliseconds(250));

} // namespace platform
