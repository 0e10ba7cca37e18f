#include "platform/models/server/chat_completion.h"

#include "platform/models/server/json.h"

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>

#include <utility>

namespace platform {
namespace {

namespace json = boost::json;

// OpenAI's and Azure's codes for a prompt or an answer that their rules forbid.
bool isRefusal(std::string_view code) {
    return code == "content_filter" || code == "content_policy_violation";
}

ServerError errorIn(const json::object& body) {
    if (const auto* error = objectIn(body, "error"))
        return {textIn(*error, "message"), isRefusal(textIn(*error, "code"))};
    if (auto words = textIn(body, "error"); !words.empty()) return {std::move(words)};
    return {textIn(body, "message")};
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

std::string completionRequest(const std::string& model, const Prompt& prompt, ThinkingSwitch off) {
    const auto& options = prompt.options;
    json::object request{{"messages",
                          {{{"role", "system"}, {"content", prompt.instructions}},
                           {{"role", "user"}, {"content", prompt.text}}}},
                         {"stream", true},
                         {"stream_options", {{"include_usage", true}}},
                         {"max_tokens", options.maximumResponseTokens}};
    if (!model.empty()) request["model"] = model;
    if (options.sampling == SamplingMode::greedy) request["temperature"] = 0;
    if (options.temperature) request["temperature"] = *options.temperature;
    if (off == ThinkingSwitch::chatTemplate) request["chat_template_kwargs"] = {{"enable_thinking", false}};
    if (off == ThinkingSwitch::reasoningEffort) request["reasoning_effort"] = "none";
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
        chunk.error = errorIn(*body);
        return chunk;
    }
    // A last chunk may carry the usage alone, with choices empty, null or left out.
    if (const auto* list = choices ? choices->if_array() : nullptr; list && !list->empty())
        if (const auto* choice = list->front().if_object()) readChoice(*choice, chunk);
    const auto* tokens = usage ? usage->if_contains("completion_tokens") : nullptr;
    if (tokens && tokens->is_int64()) chunk.tokens = tokens->get_int64();
    return chunk;
}

ServerError readError(std::string_view text) {
    const auto body = parseObject(text);
    return body ? errorIn(*body) : ServerError();
}

} // namespace platform
