// Bytes as a test writes them: hexadecimal digits, spaces wherever they help.
#pragma once

#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

inline Bytes hex(std::string_view text) {
    std::string digits;
    for (const char c : text)
        if (!std::isspace(static_cast<unsigned char>(c))) digits += c;
    Bytes bytes;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(at, 2), nullptr, 16)));
    return bytes;
}

inline Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline Bytes repeated(std::string_view text, std::size_t times) {
    const auto one = hex(text);
    Bytes all;
    for (; times > 0; --times)
        all.insert(all.end(), one.begin(), one.end());
    return all;
}
