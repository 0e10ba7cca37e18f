// Where the bytes of a message are written to: first only counted, then stored in memory of that size. Sinks
// are small values that are passed and returned, so that they stay in the processor's registers. Internal to
// this room.
#pragma once

#include "flutter/little_endian.h"
#include "flutter/short_text.h"
#include "flutter/utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace flutter {

// Counts the bytes, and finds out whether every text is UTF-8.
struct ByteCounter {
    std::size_t count = 0;
    bool allUtf8 = true;

    std::size_t position() const { return count; }
    void byte(std::uint8_t) { ++count; }
    template <class T>
    void number(T) {
        count += sizeof(T);
    }
    void bytes(const void*, std::size_t size) { count += size; }
    void text(std::string_view text) {
        allUtf8 = allUtf8 && isUtf8(text);
        count += text.size();
    }
};

// Stores the bytes.
struct ByteSink {
    std::uint8_t* start; // of memory that is large enough
    std::uint8_t* at;

    std::size_t position() const { return static_cast<std::size_t>(at - start); }
    void byte(std::uint8_t value) { *at++ = value; }
    template <class T>
    void number(T value) {
        storeLittleEndian(at, value);
        at += sizeof(T);
    }
    void bytes(const void* bytes, std::size_t size) {
        if (size != 0) std::memcpy(at, bytes, size);
        at += size;
    }
    void text(std::string_view text) {
        if (text.size() > mostShortBytes) return bytes(text.data(), text.size());
        copyShort(at, text);
        at += text.size();
    }
};

} // namespace flutter
