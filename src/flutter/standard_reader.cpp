#include "flutter/standard_reader.h"

#include "flutter/little_endian.h"
#include "flutter/standard_codec.h"
#include "flutter/standard_types.h"
#include "flutter/utf8.h"

namespace flutter {

bool StandardReader::value(EncodableValue& value) {
    const auto type = byte();
    if (!type) return false;
    switch (static_cast<StandardType>(*type)) {
    case StandardType::null:
        return true;
    case StandardType::yes:
        value.emplace<bool>(true);
        return true;
    case StandardType::no:
        value.emplace<bool>(false);
        return true;
    case StandardType::int32:
        return number<std::int32_t>(value);
    case StandardType::int64:
        return number<std::int64_t>(value);
    case StandardType::float64:
        return align(sizeof(double)) && number<double>(value);
    case StandardType::largeInteger:
    case StandardType::string:
        return string(value);
    case StandardType::byteList:
        return byteList(value);
    case StandardType::int32List:
        return numberList<std::int32_t>(value);
    case StandardType::int64List:
        return numberList<std::int64_t>(value);
    case StandardType::float64List:
        return numberList<double>(value);
    case StandardType::float32List:
        return numberList<float>(value);
    case StandardType::list:
        return list(value);
    case StandardType::map:
        return map(value);
    }
    return false;
}

bool StandardReader::string(std::string& string) {
    if (byte() != static_cast<std::uint8_t>(StandardType::string)) return false;
    const auto read = text();
    if (read) string = *read;
    return read.has_value();
}

std::optional<std::uint8_t> StandardReader::byte() {
    const auto* at = take(1);
    return at ? std::optional(*at) : std::nullopt;
}

template <class T>
bool StandardReader::number(EncodableValue& value) {
    const auto* at = take(sizeof(T));
    if (at) value.emplace<T>(loadLittleEndian<T>(at));
    return at != nullptr;
}

bool StandardReader::string(EncodableValue& value) {
    const auto read = text();
    if (read) value.emplace<std::string>(*read);
    return read.has_value();
}

bool StandardReader::byteList(EncodableValue& value) {
    const auto length = size();
    const auto* at = length ? take(*length) : nullptr;
    if (at) value.emplace<std::vector<std::uint8_t>>(at, at + *length);
    return at != nullptr;
}

template <class T>
bool StandardReader::numberList(EncodableValue& value) {
    const auto count = size();
    if (!count || !align(sizeof(T)) || *count > left() / sizeof(T)) return false;
    const auto* at = take(*count * sizeof(T));
    for (T& number : value.emplace<std::vector<T>>(*count)) {
        number = loadLittleEndian<T>(at);
        at += sizeof(T);
    }
    return true;
}

bool StandardReader::list(EncodableValue& value) {
    const auto count = size();
    if (!count || !enter(*count)) return false;
    for (auto& element : value.emplace<EncodableList>(*count))
        if (!child(element)) return false;
    --depth_;
    return true;
}

bool StandardReader::map(EncodableValue& value) {
    const auto count = size();
    if (!count || *count > left() / 2 || !enter(*count * 2)) return false;
    std::vector<EncodableMap::Pair> pairs(*count);
    for (auto& [key, element] : pairs)
        if (!child(key) || !child(element)) return false;
    --depth_;
    value.emplace<EncodableMap>(EncodableMap::fromPairs(std::move(pairs)));
    return true;
}

std::optional<std::size_t> StandardReader::size() {
    const auto first = byte();
    if (!first) return std::nullopt;
    if (*first < size16) return *first;
    if (*first == size16) {
        const auto* at = take(sizeof(std::uint16_t));
        return at ? std::optional<std::size_t>(loadLittleEndian<std::uint16_t>(at)) : std::nullopt;
    }
    const auto* at = take(sizeof(std::uint32_t));
    return at ? std::optional<std::size_t>(loadLittleEndian<std::uint32_t>(at)) : std::nullopt;
}

// A size and that many bytes, which must be UTF-8.
std::optional<std::string_view> StandardReader::text() {
    const auto length = size();
    const auto* at = length ? take(*length) : nullptr;
    if (!at) return std::nullopt;
    const std::string_view text(reinterpret_cast<const char*>(at), *length);
    return isUtf8(text) ? std::optional(text) : std::nullopt;
}

bool StandardReader::align(std::size_t width) { return take((width - position_ % width) % width) != nullptr; }

// Null pointer when fewer bytes are left.
const std::uint8_t* StandardReader::take(std::size_t count) {
    if (count > left()) return nullptr;
    const auto* at = bytes_.data() + position_;
    position_ += count;
    return at;
}

// Every value takes at least one byte, so `left()` bytes hold at most that many values. The values that are
// promised by all open lists together are counted, because otherwise nested lists could each reserve memory
// for the same bytes.
bool StandardReader::enter(std::size_t values) {
    if (depth_ == maxNesting || promised_ > left() || values > left() - promised_) return false;
    promised_ += values;
    ++depth_;
    return true;
}

bool StandardReader::child(EncodableValue& value) {
    --promised_;
    return this->value(value);
}

} // namespace flutter
