// What the fuzzers share.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

// A property that must hold for any input; the fuzzer keeps the input that breaks it.
inline void check(bool holds) {
    if (!holds) std::abort();
}

inline std::string_view asText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Gives `take` all of `whole` in pieces of that length.
void inPieces(auto whole, std::size_t length, auto take) {
    for (std::size_t at = 0; at < whole.size(); at += length)
        take(whole.subspan(at, std::min(length, whole.size() - at)));
}
