#include "platform/models/server/chat_completion.h"

// The library itself, compiled here and nowhere else.
#include <boost/json/src.hpp>

namespace platform {
namespace {

namespace json = boost::json;

std::optional<json::object> parseObject(std::string_view text) {
    json::error_code failure;
    auto value = json::parse({text.data(), text.size()}, failure);
    if (failure || !value.is_object()) return std::nullopt;
    return std::move(value.get_object());
}

const json::object* objectIn(const json::object& parent, std::string_view key) {
    const auto* value = parent.if_contains(key);
    return value ? value->if_object() : nullptr;
}

// Servers send null for what they have not.
std::string textIn(const json::object& parent, std::string_view key) {
    const auto* value = parent.if_contains(key);
    const auto* text = value ? value->if_string() : nullptr;
    return text ? std::string(text->data(), text->size()) : std::string();
}

std::string errorMessageIn(const json::object& body) {
    if (const auto* error = objectIn(body, "error")) return textIn(*error, "message");
    if (auto words = textIn(body, "error"); !words.empty()) return words;
    return textIn(body, "message");
}

void readChoice(const json::object& choice, CompletionChunk& chunk) {
    if (const auto* delta = objectIn(choice, "delta")) {
        chunk.text = textIn(*delta, "content");
        // llama-server's name and Ollama's.
        chunk.thinking = !textIn(*delta, "reasoning_content").empty() || !textIn(*delta, "reasoning").empty();
        chunk.refusal = textIn(*delta, "refusal");
    }
    if (auto reason = textIn(choice, "finish_reason"); !reason.empty())
        chunk.finishReason = std::move(reason);
}

} // namespace

std::string completionRequest(const std::string& model, const std::string& instructions,
                              const std::string& prompt, const GenerationOptions& options) {
    json::array messages;
    if (!instructions.empty()) messages.push_back({{"role", "system"}, {"content", instructions}});
    messages.push_back({{"role", "user"}, {"content", prompt}});
    json::object request{{"messages", std::move(messages)},
                         {"stream", true},
                         {"stream_options", {{"include_usage", true}}},
                         {"max_tokens", options.maximumResponseTokens}};
    if (!model.empty()) request["model"] = model;
    if (options.sampling == SamplingMode::greedy) request["temperature"] = 0;
    if (options.temperature) request["temperature"] = *options.temperature;
    return json::serialize(request);
}

std::optional<CompletionChunk> readCompletionChunk(std::string_view text) {
    const auto body = parseObject(text);
    if (!body) return std::nullopt;
    CompletionChunk chunk;
    const auto* error = body->if_contains("error");
    const auto* choices = body->if_contains("choices");
    const auto* usage = objectIn(*body, "usage");
    if ((error && !error->is_null()) || (!choices && !usage)) {
        chunk.error = errorMessageIn(*body);
        return chunk;
    }
    // A last chunk may carry the usage alone, with choices empty, null or left out.
    if (const auto* list = choices ? choices->if_array() : nullptr; list && !list->empty())
        if (const auto* choice = list->front().if_object()) readChoice(*choice, chunk);
    const auto* tokens = usage ? usage->if_contains("completion_tokens") : nullptr;
    if (tokens && tokens->is_int64()) chunk.tokens = tokens->get_int64();
    return chunk;
}

std::optional<std::vector<std::string>> readModelNames(std::string_view text) {
    const auto body = parseObject(text);
    const auto* data = body ? body->if_contains("data") : nullptr;
    // Ollama says null when it has none.
    if (!data || !(data->is_array() || data->is_null())) return std::nullopt;
    std::vector<std::string> names;
    if (const auto* list = data->if_array()) {
        for (const auto& model : *list)
            if (const auto* object = model.if_object())
                if (auto name = textIn(*object, "id"); !name.empty()) names.push_back(std::move(name));
    }
    return names;
}

std::string readErrorMessage(std::string_view text) {
    const auto body = parseObject(text);
    return body ? errorMessageIn(*body) : std::string();
}

} // namespace platform
