// The JSON in which servers say what models they have. Plain functions, any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct ListedModel {
    std::string name;
    std::string owner;                     // "llamacpp", "vllm", "library" (Ollama), or anything
    bool runsElsewhere = false;            // on another computer, which the server sends the text to
    std::vector<std::string> capabilities; // Ollama's words, such as "completion"; empty: it does not say

    // Whether the server says that it can do that.
    bool can(std::string_view capability) const;
};

struct ModelList {
    std::vector<ListedModel> models;
    // Whether it has all that a model server writes, and is not just some program's list under a usual name.
    bool isGenuine = false;
};

// The answer to GET /v1/models; absent when it is no such answer.
std::optional<ModelList> readModelList(std::string_view json);

// Adds what Ollama's answer to GET /api/tags says of them. False when it is no such answer.
bool addOllamaTags(std::string_view json, std::vector<ListedModel>& models);

// The capabilities in Ollama's answer to POST /api/show, and the request for it.
std::vector<std::string> readOllamaCapabilities(std::string_view json);
std::string ollamaShowRequest(const std::string& model);

// Whether a model of that name makes vectors or ranks texts, and so writes no answers.
bool isNoChatModel(std::string_view name);

} // namespace platform
