#include "flutter/standard_reader.h"

#include "flutter/little_endian.h"
#include "flutter/standard_codec.h"
#include "flutter/standard_types.h"
#include "flutter/utf8.h"

namespace flutter {

bool StandardReader::value(EncodableValue& value) {
    const auto* type = take(1);
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
    std::string_view read;
    if (!text(read)) return false;
    string = read;
    return true;
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
    std::string_view read;
    if (!text(read)) return false;
    value.emplace<std::string>(read);
    return true;
}

bool StandardReader::byteList(EncodableValue& value) {
    std::size_t length;
    const auto* at = size(length) ? take(length) : nullptr;
    if (at) value.emplace<std::vector<std::uint8_t>>(at, at + length);
    return at != nullptr;
}

template <class T>
bool StandardReader::numberList(EncodableValue& value) {
    std::size_t count;
    if (!size(count) || !align(sizeof(T)) || count > left() / sizeof(T)) return false;
    const auto* at = take(count * sizeof(T));
    for (T& number : value.emplace<std::vector<T>>(count)) {
        number = loadLittleEndian<T>(at);
        at += sizeof(T);
    }
    return true;
}

bool StandardReader::list(EncodableValue& value) {
    std::size_t count;
    if (!size(count) || !enter(count)) return false;
    for (auto& element : value.emplace<EncodableList>(count))
        if (!child(element)) return false;
    --depth_;
    return true;
}

bool StandardReader::map(EncodableValue& value) {
    std::size_t count;
    if (!size(count) || count > left() / 2 || !enter(count * 2)) return false;
    std::vector<EncodableMap::Pair> pairs(count);
    for (auto& [key, element] : pairs)
        if (!child(key) || !child(element)) return false;
    --depth_;
    value.emplace<EncodableMap>(EncodableMap::fromPairs(std::move(pairs)));
    return true;
}

bool StandardReader::size(std::size_t& count) {
    const auto* first = take(1);
    if (!first) return false;
    count = *first;
    if (*first < size16) return true;
    const auto* at = take(*first == size16 ? sizeof(std::uint16_t) : sizeof(std::uint32_t));
    if (at)
        count = *first == size16 ? loadLittleEndian<std::uint16_t>(at) : loadLittleEndian<std::uint32_t>(at);
    return at != nullptr;
}

// A size and that many bytes, which must be UTF-8.
bool StandardReader::text(std::string_view& text) {
    std::size_t length;
    const auto* at = size(length) ? take(length) : nullptr;
    if (!at) return false;
    text = {reinterpret_cast<const char*>(at), length};
    return isUtf8(text);
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
