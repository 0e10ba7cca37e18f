#pragma once

#include "platform/language_model.h"
#include "platform/linux/answer.h"
#include "platform/linux/model_server_probe.h"

#include <chrono>
#include <memory>
#include <string>

namespace platform {

struct Prompt {
    std::string instructions;
    std::string text;
    GenerationOptions options;
};

// Has the server answer on one connection, which is closed as soon as nobody wants the answer. A server that
// falls silent in mid-answer for longer than the limit has failed; one that has said how its answer ends is
// not waited for much longer. Any thread.
void answerFromServer(const ServedModel& model, const Prompt& prompt, std::shared_ptr<Answer> answer,
                      std::chrono::milliseconds silenceLimit = std::chrono::seconds(60));

} // namespace platform
