// Writes values in the standard codec into a ByteCounter or a ByteSink, and returns what that has become.
// Padding counts from the sink's first byte. Internal to this room.
#pragma once

#include "flutter/byte_sink.h"
#include "flutter/encodable_value.h"
#include "flutter/standard_types.h"
#include "flutter/utf8.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace flutter {

// What becomes of text that is not UTF-8.
enum class BrokenText { kept, repaired };

template <class Sink, BrokenText broken>
class StandardWriter {
public:
    static Sink string(Sink sink, std::string_view text) {
        if constexpr (broken == BrokenText::repaired) {
            if (!isUtf8(text)) return string(sink, repairedUtf8(text));
        }
        sink.byte(byteOf(StandardType::string));
        sink = size(sink, text.size());
        sink.text(text);
        return sink;
    }

    static Sink value(Sink sink, const EncodableValue& value) {
        // Most values are strings, and this is faster than visiting.
        if (const auto* text = value.getIf<std::string>()) return string(sink, *text);
        return std::visit([&](const auto& plain) { return write(sink, plain); }, value.storage());
    }

private:
    static Sink write(Sink sink, std::monostate) {
        sink.byte(byteOf(StandardType::null));
        return sink;
    }

    static Sink write(Sink sink, bool value) {
        sink.byte(byteOf(value ? StandardType::yes : StandardType::no));
        return sink;
    }

    static Sink write(Sink sink, std::int32_t value) {
        sink.byte(byteOf(StandardType::int32));
        sink.number(value);
        return sink;
    }

    static Sink write(Sink sink, std::int64_t value) {
        using Narrow = std::numeric_limits<std::int32_t>;
        if (value >= Narrow::min() && value <= Narrow::max())
            return write(sink, static_cast<std::int32_t>(value));
        sink.byte(byteOf(StandardType::int64));
        sink.number(value);
        return sink;
    }

    static Sink write(Sink sink, double value) {
        sink.byte(byteOf(StandardType::float64));
        sink = aligned(sink, sizeof value);
        sink.number(value);
        return sink;
    }

    static Sink write(Sink sink, const std::string& value) { return string(sink, value); }

    static Sink write(Sink sink, const std::vector<std::uint8_t>& bytes) {
        sink.byte(byteOf(StandardType::byteList));
        sink = size(sink, bytes.size());
        sink.bytes(bytes.data(), bytes.size());
        return sink;
    }

    template <class T>
    static Sink write(Sink sink, const std::vector<T>& numbers) {
        sink.byte(byteOf(listOf<T>));
        sink = aligned(size(sink, numbers.size()), sizeof(T));
        for (const T number : numbers)
            sink.number(number);
        return sink;
    }

    static Sink write(Sink sink, const EncodableList& list) {
        sink.byte(byteOf(StandardType::list));
        sink = size(sink, list.size());
        for (const auto& element : list)
            sink = value(sink, element);
        return sink;
    }

    static Sink write(Sink sink, const EncodableMap& map) {
        sink.byte(byteOf(StandardType::map));
        sink = size(sink, map.size());
        for (const auto& [key, element] : map)
            sink = value(value(sink, key), element);
        return sink;
    }

    // A size above 32 bits has no encoding; such a message is longer than any frame and is never sent.
    static Sink size(Sink sink, std::size_t count) {
        if (count < size16) {
            sink.byte(static_cast<std::uint8_t>(count));
        } else if (count <= std::numeric_limits<std::uint16_t>::max()) {
            sink.byte(size16);
            sink.number(static_cast<std::uint16_t>(count));
        } else {
            sink.byte(size32);
            sink.number(static_cast<std::uint32_t>(count));
        }
        return sink;
    }

    static Sink aligned(Sink sink, std::size_t width) {
        while (sink.position() % width != 0)
            sink.byte(0);
        return sink;
    }

    static constexpr std::uint8_t byteOf(StandardType type) { return static_cast<std::uint8_t>(type); }

    template <class T>
    static constexpr StandardType listOf = std::is_same_v<T, std::int32_t>   ? StandardType::int32List
                                           : std::is_same_v<T, std::int64_t> ? StandardType::int64List
                                           : std::is_same_v<T, double>       ? StandardType::float64List
                                                                             : StandardType::float32List;
};

} // namespace flutter
