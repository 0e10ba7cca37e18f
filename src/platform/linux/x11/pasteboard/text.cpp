#include "platform/linux/x11/pasteboard/text.h"

#include "platform/linux/x11/pasteboard/contents.h"

#include <glib.h>

#include <memory>

namespace platform::selection {

namespace {

std::string wellFormed(std::string text) {
    const auto length = static_cast<gssize>(text.size());
    if (g_utf8_validate(text.data(), length, nullptr)) return text;
    const std::unique_ptr<gchar, void (*)(gpointer)> valid(g_utf8_make_valid(text.data(), length), g_free);
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

std::string latin1FromUtf8(std::string_view utf8) {
    const std::string text = wellFormed(std::string(utf8));
    std::string latin1;
    latin1.reserve(text.size());
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        const gunichar character = g_utf8_get_char(at);
        latin1 += character <= 0xFF ? static_cast<char>(character) : '?';
    }
    return latin1;
}

std::string utf8FromData(const Data& data, const PasteboardType& target) {
    std::string text(data.bytes.begin(), data.bytes.end());
    // Motif and Java programs count the C string's end as part of the text.
    while (!text.empty() && text.back() == '\0')
        text.pop_back();
    // What came is named by the answer's type: xterm answers TEXT and UTF8_STRING requests with STRING at
    // times.
    return encodingOf(data, target).type == "STRING" ? utf8FromLatin1(text) : wellFormed(std::move(text));
}

} // namespace platform::selection
