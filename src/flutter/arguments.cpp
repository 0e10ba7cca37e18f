#include "flutter/arguments.h"

#include "flutter/integer.h"

#include <cmath>
#include <limits>

namespace flutter {
namespace {

// C++ leaves the conversion of a number outside the range undefined; here it is the nearest number in it.
template <class T>
T saturated(double number) {
    using Limits = std::numeric_limits<T>;
    if (std::isnan(number)) return 0;
    if (number <= static_cast<double>(Limits::min())) return Limits::min();
    const double beyond = std::ldexp(1.0, Limits::digits);
    return number >= beyond ? Limits::max() : static_cast<T>(number);
}

} // namespace

std::optional<bool> asBool(const EncodableValue& value) {
    const auto* flag = value.getIf<bool>();
    return flag ? std::optional(*flag) : std::nullopt;
}

std::optional<std::uint32_t> asUInt32(const EncodableValue& value) {
    if (const auto number = integer(value)) return static_cast<std::uint32_t>(*number);
    const auto* number = value.getIf<double>();
    return number ? std::optional(saturated<std::uint32_t>(*number)) : std::nullopt;
}

std::optional<std::int64_t> asInt64(const EncodableValue& value) {
    if (const auto number = integer(value)) return number;
    const auto* number = value.getIf<double>();
    return number ? std::optional(saturated<std::int64_t>(*number)) : std::nullopt;
}

std::optional<double> asDouble(const EncodableValue& value) {
    if (const auto number = integer(value)) return static_cast<double>(*number);
    const auto* number = value.getIf<double>();
    return number ? std::optional(*number) : std::nullopt;
}

const std::string* asString(const EncodableValue& value) { return value.getIf<std::string>(); }

const EncodableMap* asMap(const EncodableValue& value) {
    const auto* map = value.getIf<EncodableMap>();
    if (!map) return nullptr;
    for (const auto& [key, element] : *map)
        if (!asString(key)) return nullptr;
    return map;
}

std::optional<std::vector<std::string>> asStringList(const EncodableValue& value) {
    const auto* list = value.getIf<EncodableList>();
    if (!list) return std::nullopt;
    std::vector<std::string> strings;
    for (const auto& element : *list) {
        const auto* text = asString(element);
        if (!text) return std::nullopt;
        strings.push_back(*text);
    }
    return strings;
}

std::optional<std::vector<std::pair<std::string, std::string>>> asStringMap(const EncodableValue& value) {
    const auto* map = asMap(value);
    if (!map) return std::nullopt;
    std::vector<std::pair<std::string, std::string>> strings;
    for (const auto& [key, element] : *map) {
        const auto* text = asString(element);
        if (!text) return std::nullopt;
        strings.emplace_back(*asString(key), *text);
    }
    return strings;
}

const EncodableValue& member(const EncodableMap* map, std::string_view key) {
    static const EncodableValue absent;
    const auto* value = map ? map->find(key) : nullptr;
    return value ? *value : absent;
}

} // namespace flutter
