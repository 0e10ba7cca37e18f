// The letters of English, whatever the locale.
#pragma once

namespace quillmark {

constexpr bool isLower(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isAscii(char c) { return (c & 0x80) == 0; }
constexpr char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char upper(char c) { return isLower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

} // namespace quillmark
