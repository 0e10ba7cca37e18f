#include "platform/linux/x11/pasteboard/contents.h"

#include "platform/linux/x11/pasteboard/text.h"

#include <algorithm>
#include <array>

namespace platform::selection {

namespace {

Data bytesOf(std::string_view text, const Encoding& encoding) {
    return {std::vector<std::uint8_t>(text.begin(), text.end()), encodingNote(encoding)};
}

} // namespace

std::string encodingNote(const Encoding& encoding) {
    return encoding.type + '/' + std::to_string(encoding.format);
}

Encoding encodingOf(const Data& data, const PasteboardType& target) {
    const auto slash = data.encoding.rfind('/');
    if (slash == std::string::npos || slash == 0) return {target, 8};
    Encoding encoding{data.encoding.substr(0, slash), 8};
    const std::string_view format = std::string_view(data.encoding).substr(slash + 1);
    if (format == "16" && data.bytes.size() % 2 == 0) encoding.format = 16;
    if (format == "32" && data.bytes.size() % 4 == 0) encoding.format = 32;
    return encoding;
}

SharedContents emptyContents() {
    // Klipper fills an owner without any target with its last text again, and skips one with this note.
    static const PasteboardType hint = "x-kde-passwordManagerHint";
    return std::make_shared<const Contents>(Contents{{{hint, bytesOf("secret", {hint, 8})}}, true});
}

SharedContents textContents(std::string_view utf8) {
    static const PasteboardType charset = "text/plain;charset=utf-8";
    return std::make_shared<const Contents>(
        Contents{{{"UTF8_STRING", bytesOf(utf8, {"UTF8_STRING", 8})},
                  {charset, bytesOf(utf8, {charset, 8})},
                  {"text/plain", bytesOf(utf8, {"text/plain", 8})},
                  {"STRING", bytesOf(latin1FromUtf8(utf8), {"STRING", 8})},
                  {"TEXT", bytesOf(utf8, {"UTF8_STRING", 8})}},
                 false});
}

bool isProtocolTarget(std::string_view target) {
    static constexpr std::array<std::string_view, 5> names = {"TARGETS", "MULTIPLE", "TIMESTAMP",
                                                              "SAVE_TARGETS", "DELETE"};
    return std::ranges::find(names, target) != names.end() || target.starts_with("INSERT_");
}

} // namespace platform::selection
