#include "platform/models/server/json.h"

#include <boost/json/parse.hpp>

#include <utility>

namespace platform {

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

const json::array* arrayIn(const json::object& parent, std::string_view key) {
    const auto* value = parent.if_contains(key);
    return value ? value->if_array() : nullptr;
}

std::string textIn(const json::object& parent, std::string_view key) {
    const auto* value = parent.if_contains(key);
    const auto* text = value ? value->if_string() : nullptr;
    return text ? std::string(text->data(), text->size()) : std::string();
}

} // namespace platform
