#pragma once

#include "platform/models/generation/answer.h"
#include "platform/models/server/chat_completion.h"
#include "platform/models/server/chat_stream.h"
#include "platform/models/server/model_server.h"

#include <functional>
#include <memory>
#include <string>

namespace platform {

// What asking a server for an answer says of the server. Called on a background thread.
struct ServerNews {
    // A model takes no such request (HTTP 400), and the next one does.
    std::function<void(const std::string& model)> cannotAnswer = {};
    // The server cannot be reached, or has ended the connection in the middle of its answer.
    std::function<void()> lost = {};
};

// Has the server answer on one connection, which is closed as soon as nobody wants the answer. Any thread.
void askServer(const ServedModel& served, const Prompt& prompt, std::shared_ptr<Answer> answer,
               ServerNews news = {}, const SilenceLimits& limits = {});

} // namespace platform
