#include "model/system_model_bridge.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <variant>

namespace {

// Decimal digits after at most one sign, and nothing else.
std::optional<std::int64_t> parsed(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return number;
}

} // namespace

std::optional<std::int64_t> SystemModelBridge::reflectInt(const platform::Mirror& value,
                                                          std::string_view label) {
    const auto field = std::ranges::find_if(
        value.children, [&](const platform::Mirror::Child& child) { return child.label == label; });
    if (field == value.children.end()) return std::nullopt;
    if (const auto* integer = std::get_if<std::int64_t>(&field->value)) return *integer;
    return parsed(std::get<std::string>(field->value));
}
