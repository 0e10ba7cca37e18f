#include "model/status.h"

#include "language/model_phrases.h"

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

namespace quillmark {

namespace {

namespace json = boost::json;

std::string text(const json::object& object, std::string_view key) {
    const auto* value = object.if_contains(key);
    return value && value->is_string() ? std::string(value->get_string().c_str()) : std::string();
}

bool flag(const json::object& object, std::string_view key) {
    const auto* value = object.if_contains(key);
    return value && value->is_bool() && value->get_bool();
}

// "127.0.0.1:8080" of "http://127.0.0.1:8080/v1".
std::string hostOf(const std::string& address) {
    const auto scheme = address.find("://");
    const auto start = scheme == std::string::npos ? 0 : scheme + 3;
    return address.substr(start, address.find('/', start) - start);
}

} // namespace

std::optional<ModelStatus> readModelStatus(std::string_view printed) {
    json::error_code error;
    const auto value = json::parse(json::string_view(printed.data(), printed.size()), error);
    const auto* object = error ? nullptr : value.if_object();
    if (object == nullptr || text(*object, "state").empty()) return std::nullopt;
    ModelStatus status{.available = text(*object, "state") == "available",
                       .model = text(*object, "model"),
                       .address = text(*object, "address"),
                       .onThisComputer = flag(*object, "on_this_computer"),
                       .chosen = flag(*object, "chosen"),
                       .whyNot = text(*object, "detail")};
    if (const auto* others = object->if_contains("others"); others && others->is_array())
        for (const auto& other : others->get_array())
            if (other.is_object()) status.others.push_back(text(other.get_object(), "why_not"));
    return status;
}

std::string inWords(const ModelStatus& status) {
    if (!status.available) return say(phrases::noModel);
    const auto model = status.model.empty() ? say(phrases::unnamedModel) : status.model;
    return say(status.onThisComputer ? phrases::modelHere : phrases::modelElsewhere,
               {model, hostOf(status.address)});
}

} // namespace quillmark
