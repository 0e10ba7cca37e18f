#include "platform/models/server/model_list.h"

#include "platform/models/server/json.h"

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>

#include <algorithm>
#include <array>
#include <cctype>

namespace platform {
namespace {

namespace json = boost::json;

std::vector<std::string> textsIn(const json::object& parent, std::string_view key) {
    std::vector<std::string> texts;
    if (const auto* list = arrayIn(parent, key))
        for (const auto& value : *list)
            if (const auto* text = value.if_string()) texts.emplace_back(text->data(), text->size());
    return texts;
}

// Ollama's names for models that its makers run: "gpt-oss:120b-cloud", "kimi:cloud".
bool isCloudName(std::string_view name) { return name.ends_with("-cloud") || name.ends_with(":cloud"); }

} // namespace

bool ListedModel::can(std::string_view capability) const {
    return std::ranges::find(capabilities, capability) != capabilities.end();
}

std::optional<ModelList> readModelList(std::string_view text) {
    const auto body = parseObject(text);
    const auto* data = body ? body->if_contains("data") : nullptr;
    // Ollama says null when it has none.
    if (!data || !(data->is_array() || data->is_null())) return std::nullopt;
    ModelList list;
    list.isGenuine = textIn(*body, "object") == "list";
    const auto* entries = data->if_array();
    for (std::size_t i = 0; entries && i < entries->size(); ++i) {
        const auto* entry = entries->at(i).if_object();
        if (!entry || textIn(*entry, "id").empty()) continue;
        list.isGenuine = list.isGenuine && textIn(*entry, "object") == "model";
        const auto name = textIn(*entry, "id");
        list.models.push_back({name, textIn(*entry, "owned_by"), isCloudName(name), {}});
    }
    return list;
}

bool addOllamaTags(std::string_view text, std::vector<ListedModel>& models) {
    const auto body = parseObject(text);
    const auto* tags = body ? arrayIn(*body, "models") : nullptr;
    if (!tags) return false;
    for (const auto& tag : *tags) {
        const auto* entry = tag.if_object();
        if (!entry) continue;
        const auto model = std::ranges::find(models, textIn(*entry, "name"), &ListedModel::name);
        if (model == models.end()) continue;
        model->runsElsewhere = model->runsElsewhere || !textIn(*entry, "remote_host").empty() ||
                               !textIn(*entry, "remote_model").empty();
        model->capabilities = textsIn(*entry, "capabilities");
    }
    return true;
}

std::vector<std::string> readOllamaCapabilities(std::string_view text) {
    const auto body = parseObject(text);
    return body ? textsIn(*body, "capabilities") : std::vector<std::string>();
}

std::string ollamaShowRequest(const std::string& model) {
    return json::serialize(json::object{{"model", model}});
}

// By how makers of such models name them.
bool isNoChatModel(std::string_view name) {
    static constexpr std::array<std::string_view, 14> parts{"embed",       "rerank",
                                                            "minilm",      "bge-",
                                                            "gte-",        "e5-",
                                                            "sentence-t5", "paraphrase-multilingual",
                                                            "colbert",     "splade",
                                                            "whisper",     "tts-",
                                                            "clip-",       "stable-diffusion"};
    std::string small(name);
    std::ranges::transform(small, small.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::ranges::any_of(parts, [&](std::string_view part) {
        const auto at = small.find(part);
        // "nomic-embed-text", but not "modelbge-x"
        return at != std::string::npos &&
               (at == 0 || std::isalnum(static_cast<unsigned char>(small[at - 1])) == 0 || part == "embed");
    });
}

} // namespace platform
