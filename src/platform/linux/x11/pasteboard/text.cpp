#include "platform/linux/x11/pasteboard/text.h"

#include "platform/linux/base/handle.h"

#include <glib.h>

namespace platform::selection {

namespace {

std::string wellFormed(std::string text) {
    const auto length = static_cast<gssize>(text.size());
    if (g_utf8_validate(text.data(), length, nullptr)) return text;
    const Handle<char, g_free> valid(g_utf8_make_valid(text.data(), length));
    return valid.get();
}

std::string utf8FromLatin1(std::string_view latin1) {
    std::string utf8;
    utf8.reserve(latin1.size());
    for (const char character : latin1) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80) {
            utf8 += character;
        } else {
            utf8 += static_cast<char>(0xC0 | (byte >> 6));
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
}

} // namespace

std::string_view text(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::vector<std::uint8_t> latin1FromUtf8(std::string_view utf8) {
    std::vector<std::uint8_t> latin1;
    latin1.reserve(utf8.size());
    for (const char *at = utf8.data(), *end = at + utf8.size(); at < end;) {
        const gunichar character = g_utf8_get_char_validated(at, end - at);
        const bool valid = g_unichar_validate(character) != FALSE;
        latin1.push_back(static_cast<std::uint8_t>(valid && character <= 0xFF ? character : '?'));
        at = valid ? g_utf8_next_char(at) : at + 1;
    }
    return latin1;
}

std::string utf8FromDelivered(std::string_view text, std::string_view type) {
    // Motif and Java programs count the zero byte at the end of a C string as part of the text.
    while (!text.empty() && text.back() == '\0')
        text.remove_suffix(1);
    // The type says what came, whatever was asked for: xterm answers requests for UTF8_STRING and TEXT with
    // STRING when the text is Latin-1.
    return type == "STRING" ? utf8FromLatin1(text) : wellFormed(std::string(text));
}

} // namespace platform::selection
