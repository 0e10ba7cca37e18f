#pragma once

#include "platform/models/generation/answer.h"
#include "platform/models/server/chat_completion.h"
#include "platform/models/server/chat_stream.h"
#include "platform/models/server/model_server.h"

#include <functional>
#include <memory>
#include <string>

namespace platform {

// Has the server answer on one connection, which is closed as soon as nobody wants the answer. A model that
// takes no such request (HTTP 400) is told of, once the next one does. Any thread.
void askServer(const ServedModel& served, const Prompt& prompt, std::shared_ptr<Answer> answer,
               std::function<void(const std::string& model)> cannotAnswer = {},
               const SilenceLimits& limits = {});

} // namespace platform
