// Bytes as a test writes them: hexadecimal digits, spaces wherever they help.
#pragma once

#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

inline std::vector<std::uint8_t> hex(std::string_view text) {
    std::string digits;
    for (const char c : text)
        if (!std::isspace(static_cast<unsigned char>(c))) digits += c;
    std::vector<std::uint8_t> bytes;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(at, 2), nullptr, 16)));
    return bytes;
}

inline std::vector<std::uint8_t> operator+(std::vector<std::uint8_t> a, const std::vector<std::uint8_t>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline std::vector<std::uint8_t> repeated(std::string_view text, std::size_t times) {
    const auto one = hex(text);
    std::vector<std::uint8_t> all;
    for (; times > 0; --times)
        all.insert(all.end(), one.begin(), one.end());
    return all;
}
