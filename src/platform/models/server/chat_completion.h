// The JSON of the OpenAI-compatible interface that local model servers share (platform.openai.com/docs,
// "Chat completions", streaming). Plain functions, any thread.
#pragma once

#include "platform/language_model.h"
#include "platform/models/server/model_server.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

struct Prompt {
    std::string instructions;
    std::string text;
    GenerationOptions options;
};

// The body of POST /v1/chat/completions. The model may be empty; `off` tells it not to think first.
std::string completionRequest(const std::string& model, const Prompt& prompt, ThinkingSwitch off);

// What a server reports instead of an answer.
struct ServerError {
    std::string words;      // its own; empty when it has none
    bool isRefusal = false; // by its class; the words mean nothing
};

// What one event of a streamed answer adds.
struct CompletionChunk {
    std::string text;
    bool thinking = false; // the model thinks, which is no text
    std::string refusal;   // the model's words for why it will not answer
    std::optional<std::string> finishReason;
    std::optional<std::int64_t> tokens; // of the whole answer
    std::optional<ServerError> error;
};

// Absent when it is not such an event.
std::optional<CompletionChunk> readCompletionChunk(std::string_view json);

// In the body of an answer that reports an error.
ServerError readError(std::string_view json);

} // namespace platform
