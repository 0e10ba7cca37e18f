#pragma once

#include "platform/language_model.h"
#include "platform/models/generation/answer.h"
#include "platform/models/server/probe.h"

#include <chrono>
#include <memory>
#include <string>

namespace platform {

struct Prompt {
    std::string instructions;
    std::string text;
    GenerationOptions options;
};

// How long a server may be silent before it has failed.
struct SilenceLimits {
    // It may have others to answer first, and models think before they write.
    std::chrono::milliseconds beforeText = std::chrono::minutes(10);
    std::chrono::milliseconds inMidAnswer = std::chrono::seconds(60);
};

// Has the server answer on one connection, which is closed as soon as nobody wants the answer. One that has
// said how its answer ends is not waited for much longer. Any thread.
void answerFromServer(const ServedModel& model, const Prompt& prompt, std::shared_ptr<Answer> answer,
                      const SilenceLimits& limits = {});

} // namespace platform
