#include "flutter/standard_writer.h"

#include "flutter/little_endian.h"
#include "flutter/utf8.h"

#include <limits>

namespace flutter {

void StandardWriter::value(const EncodableValue& value) {
    std::visit([this](const auto& plain) { write(plain); }, value.storage());
}

void StandardWriter::string(std::string_view text) {
    if (!isUtf8(text)) {
        string(repairedUtf8(text));
        return;
    }
    type(StandardType::string);
    size(text.size());
    // As bytes: between char and std::uint8_t, insert() goes one by one.
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    bytes_.insert(bytes_.end(), bytes, bytes + text.size());
}

void StandardWriter::write(std::monostate) { type(StandardType::null); }

void StandardWriter::write(bool value) { type(value ? StandardType::yes : StandardType::no); }

void StandardWriter::write(std::int32_t value) {
    type(StandardType::int32);
    appendLittleEndian(bytes_, value);
}

void StandardWriter::write(std::int64_t value) {
    using Narrow = std::numeric_limits<std::int32_t>;
    if (value >= Narrow::min() && value <= Narrow::max()) {
        write(static_cast<std::int32_t>(value));
        return;
    }
    type(StandardType::int64);
    appendLittleEndian(bytes_, value);
}

void StandardWriter::write(double value) {
    type(StandardType::float64);
    align(sizeof value);
    appendLittleEndian(bytes_, value);
}

void StandardWriter::write(const std::vector<std::uint8_t>& bytes) {
    type(StandardType::byteList);
    size(bytes.size());
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void StandardWriter::write(const EncodableList& list) {
    type(StandardType::list);
    size(list.size());
    for (const auto& element : list)
        value(element);
}

void StandardWriter::write(const EncodableMap& map) {
    type(StandardType::map);
    size(map.size());
    for (const auto& [key, element] : map) {
        value(key);
        value(element);
    }
}

template <class T>
void StandardWriter::numberList(StandardType listType, const std::vector<T>& numbers) {
    type(listType);
    size(numbers.size());
    align(sizeof(T));
    for (const T number : numbers)
        appendLittleEndian(bytes_, number);
}

// A size above 32 bits has no encoding; such a message is longer than any frame and never leaves.
void StandardWriter::size(std::size_t count) {
    if (count < size16) {
        byte(static_cast<std::uint8_t>(count));
    } else if (count <= std::numeric_limits<std::uint16_t>::max()) {
        byte(size16);
        appendLittleEndian(bytes_, static_cast<std::uint16_t>(count));
    } else {
        byte(size32);
        appendLittleEndian(bytes_, static_cast<std::uint32_t>(count));
    }
}

void StandardWriter::align(std::size_t width) {
    while (bytes_.size() % width != 0)
        byte(0);
}

} // namespace flutter
