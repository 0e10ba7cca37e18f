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

// Counts the bytes.
struct ByteCounter {
    std::size_t count = 0;

    std::size_t position() const { return count; }
    void byte(std::uint8_t) { ++count; }
    template <class T>
    void number(T) {
        count += sizeof(T);
    }
    void bytes(const void*, std::size_t size) { count += size; }
    void text(std::string_view text) { count += text.size(); }
};

// Stores the bytes, and finds out whether every text is UTF-8.
struct ByteSink {
    // In memory that is large enough. It starts at a multiple of 8 bytes, as all that is allocated does: so
    // does padding, which counts from there, and the sink is no larger than two registers.
    std::uint8_t* at;
    bool allUtf8 = true;

    std::size_t position() const { return reinterpret_cast<std::uintptr_t>(at); }
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
        allUtf8 = copyUtf8(at, text) && allUtf8;
        at += text.size();
    }
};

} // namespace flutter
