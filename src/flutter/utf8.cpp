#include "flutter/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace flutter {
namespace {

// The length of the well-formed sequence at the start, 0 when there is none (Unicode 15, table 3-7).
std::size_t sequenceLength(std::string_view bytes) {
    const auto at = [&](std::size_t index) { return static_cast<std::uint8_t>(bytes[index]); };
    const std::uint8_t lead = at(0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;

    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (bytes.size() < length) return 0;
    const std::uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (at(1) < lowest || at(1) > highest) return 0;
    for (std::size_t index = 2; index < length; ++index)
        if ((at(index) & 0xC0) != 0x80) return 0;
    return length;
}

template <class Number>
Number load(const char* bytes) {
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

// Numbers for one register of the processor, by an extension that g++ and clang have for every processor.
struct SmallRegister {
    using Numbers [[gnu::vector_size(16)]] = std::uint64_t;
};
struct LargeRegister {
    using Numbers [[gnu::vector_size(32)]] = std::uint64_t;
};

// For text of at least the size of a register, which is copied, unless `to` is nullptr_t.
template <class Register, class To>
[[gnu::always_inline]] inline bool isAsciiBy(std::string_view text, To to) {
    using Numbers = typename Register::Numbers;
    constexpr auto size = static_cast<std::ptrdiff_t>(sizeof(Numbers));
    // Keeps in `seen` which bits any number has had.
    const auto add = [&](Numbers& seen, const char* bytes) {
        Numbers more;
        std::memcpy(&more, bytes, sizeof more);
        // Before the line below: else g++ 12 loads the bytes twice.
        if constexpr (std::is_pointer_v<To>) std::memcpy(to + (bytes - text.data()), &more, sizeof more);
        seen |= more;
    };
    Numbers first{}, second{}, third{}, fourth{}; // one would wait for itself
    const char* at = text.data();
    const char* const end = at + text.size();
    for (; end - at >= 4 * size; at += 4 * size) {
        add(first, at);
        add(second, at + size);
        add(third, at + 2 * size);
        add(fourth, at + 3 * size);
    }
    for (; end - at >= size; at += size)
        add(first, at);
    add(second, end - size); // some bytes twice
    first |= second | third | fourth;
    std::uint64_t all = 0;
    for (std::size_t number = 0; number < sizeof first / sizeof all; ++number)
        all |= first[number];
    return (all & highestBits) == 0;
}

#ifdef __x86_64__
// Most of these processors have large registers, which must not be used on the others.
template <class To>
[[gnu::target("avx2")]] bool isAsciiByLargeRegisters(std::string_view text, To to) {
    return isAsciiBy<LargeRegister>(text, to);
}
const bool hasLargeRegisters = __builtin_cpu_supports("avx2") != 0;
#else
template <class To>
bool isAsciiByLargeRegisters(std::string_view text, To to) {
    return isAsciiBy<SmallRegister>(text, to);
}
constexpr bool hasLargeRegisters = false;
#endif

// For text that is not short.
template <class To>
bool isLongAscii(std::string_view text, To to) {
    constexpr std::size_t worthIt = 256;
    if (hasLargeRegisters && text.size() >= worthIt) return isAsciiByLargeRegisters(text, to);
    return isAsciiBy<SmallRegister>(text, to);
}

} // namespace

std::size_t validUtf8Prefix(std::string_view bytes) {
    constexpr std::size_t wordSize = sizeof(std::uint64_t);
    std::size_t valid = 0;
    while (valid < bytes.size()) {
        const bool isWord = bytes.size() - valid >= wordSize;
        if (isWord && (load<std::uint64_t>(bytes.data() + valid) & highestBits) == 0) {
            valid += wordSize;
            continue;
        }
        // Up to the end of this word, one sequence at a time.
        const std::size_t end = std::min(bytes.size(), valid + wordSize);
        while (valid < end) {
            const std::size_t length = sequenceLength(bytes.substr(valid));
            if (length == 0) return valid;
            valid += length;
        }
    }
    return valid;
}

bool isUtf8InFull(std::string_view bytes) {
    // Most text is ASCII.
    const bool isAscii = bytes.size() > mostShortBytes && isLongAscii(bytes, nullptr);
    return isAscii || validUtf8Prefix(bytes) == bytes.size();
}

bool copyUtf8InFull(std::uint8_t* to, std::string_view bytes) {
    return isLongAscii(bytes, to) || validUtf8Prefix(bytes) == bytes.size();
}

std::string repairedUtf8(std::string_view bytes) {
    std::string repaired;
    for (;;) {
        const std::size_t valid = validUtf8Prefix(bytes);
        repaired += bytes.substr(0, valid);
        if (valid == bytes.size()) return repaired;
        repaired += "\xEF\xBF\xBD";
        bytes.remove_prefix(valid + 1);
    }
}

} // namespace flutter
