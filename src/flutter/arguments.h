// How the arguments of channel methods are read: a value of another type counts as absent. Plain functions;
// the pointers and references that they return are valid as long as the value read.
#pragma once

#include "flutter/encodable_value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace flutter {

// A boolean is not a number and a number is not a boolean.
std::optional<bool> asBool(const EncodableValue& value);

// Any number. An integer keeps its low 32 bits. A floating-point number loses its fraction; one outside the
// range becomes the nearest number in it, NaN becomes 0.
std::optional<std::uint32_t> asUInt32(const EncodableValue& value);
// Any number, in the same way.
std::optional<std::int64_t> asInt64(const EncodableValue& value);
std::optional<double> asDouble(const EncodableValue& value);

// Null when the value is not a string.
const std::string* asString(const EncodableValue& value);

// Null when the value is not a map or one of its keys is not a string.
const EncodableMap* asMap(const EncodableValue& value);

// Absent as a whole when one element, key or value is not a string.
std::optional<std::vector<std::string>> asStringList(const EncodableValue& value);
std::optional<std::vector<std::pair<std::string, std::string>>> asStringMap(const EncodableValue& value);

// The value of a key; a null value when the map or the key is absent.
const EncodableValue& member(const EncodableMap* map, std::string_view key);

} // namespace flutter
