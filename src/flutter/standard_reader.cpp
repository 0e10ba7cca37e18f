#include "flutter/standard_reader.h"

#include "flutter/little_endian.h"
#include "flutter/standard_codec.h"
#include "flutter/standard_types.h"
#include "flutter/utf8.h"

namespace flutter {

std::optional<EncodableValue> StandardReader::value() {
    const auto type = byte();
    if (!type) return std::nullopt;
    switch (static_cast<StandardType>(*type)) {
    case StandardType::null:
        return EncodableValue();
    case StandardType::yes:
        return true;
    case StandardType::no:
        return false;
    case StandardType::int32:
        return number<std::int32_t>();
    case StandardType::int64:
        return number<std::int64_t>();
    case StandardType::float64:
        return float64();
    case StandardType::largeInteger:
    case StandardType::string:
        return string();
    case StandardType::byteList:
        return byteList();
    case StandardType::int32List:
        return numberList<std::int32_t>();
    case StandardType::int64List:
        return numberList<std::int64_t>();
    case StandardType::float64List:
        return numberList<double>();
    case StandardType::float32List:
        return numberList<float>();
    case StandardType::list:
        return list();
    case StandardType::map:
        return map();
    }
    return std::nullopt;
}

std::optional<std::uint8_t> StandardReader::byte() {
    const auto* at = take(1);
    return at ? std::optional(*at) : std::nullopt;
}

template <class T>
StandardReader::Result StandardReader::number() {
    const auto* at = take(sizeof(T));
    if (!at) return std::nullopt;
    return EncodableValue(loadLittleEndian<T>(at));
}

StandardReader::Result StandardReader::float64() {
    return align(sizeof(double)) ? number<double>() : std::nullopt;
}

StandardReader::Result StandardReader::string() {
    const auto length = size();
    const auto* at = length ? take(*length) : nullptr;
    if (!at) return std::nullopt;
    const std::string_view text(reinterpret_cast<const char*>(at), *length);
    if (!isUtf8(text)) return std::nullopt;
    return EncodableValue(text);
}

StandardReader::Result StandardReader::byteList() {
    const auto length = size();
    const auto* at = length ? take(*length) : nullptr;
    if (!at) return std::nullopt;
    return EncodableValue(std::vector<std::uint8_t>(at, at + *length));
}

template <class T>
StandardReader::Result StandardReader::numberList() {
    const auto count = size();
    if (!count || !align(sizeof(T)) || *count > left() / sizeof(T)) return std::nullopt;
    const auto* at = take(*count * sizeof(T));
    std::vector<T> numbers(*count);
    for (T& number : numbers) {
        number = loadLittleEndian<T>(at);
        at += sizeof(T);
    }
    return EncodableValue(std::move(numbers));
}

StandardReader::Result StandardReader::list() {
    const auto count = size();
    if (!count || !enter(*count)) return std::nullopt;
    EncodableList elements;
    elements.reserve(*count);
    while (elements.size() < *count) {
        auto element = child();
        if (!element) return std::nullopt;
        elements.push_back(std::move(*element));
    }
    --depth_;
    return EncodableValue(std::move(elements));
}

StandardReader::Result StandardReader::map() {
    const auto count = size();
    if (!count || *count > left() / 2 || !enter(*count * 2)) return std::nullopt;
    std::vector<EncodableMap::Pair> pairs;
    pairs.reserve(*count);
    while (pairs.size() < *count) {
        auto key = child();
        auto element = key ? child() : std::nullopt;
        if (!element) return std::nullopt;
        pairs.emplace_back(std::move(*key), std::move(*element));
    }
    --depth_;
    return EncodableValue(EncodableMap::fromPairs(std::move(pairs)));
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

bool StandardReader::align(std::size_t width) { return take((width - position_ % width) % width) != nullptr; }

// Null pointer when fewer bytes are left.
const std::uint8_t* StandardReader::take(std::size_t count) {
    if (count > left()) return nullptr;
    const auto* at = bytes_.data() + position_;
    position_ += count;
    return at;
}

// Every value takes a byte, so whatever is promised, here and further out, must still be there. Counting
// all open lists together keeps nested ones from each reserving memory for the same few bytes.
bool StandardReader::enter(std::size_t values) {
    if (depth_ == maxNesting || promised_ > left() || values > left() - promised_) return false;
    promised_ += values;
    ++depth_;
    return true;
}

StandardReader::Result StandardReader::child() {
    --promised_;
    return value();
}

} // namespace flutter
