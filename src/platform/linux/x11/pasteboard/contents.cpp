#include "platform/linux/x11/pasteboard/contents.h"

#include "platform/linux/x11/pasteboard/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace platform::selection {

namespace {

SharedBytes shared(std::string_view text) {
    return std::make_shared<const std::vector<std::uint8_t>>(text.begin(), text.end());
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

SharedBytes Representation::delivered() const {
    return convertToLatin1 ? std::make_shared<const std::vector<std::uint8_t>>(latin1FromUtf8(text(*bytes)))
                           : bytes;
}

Data Representation::data() const { return {*delivered(), encodingNote(encoding)}; }

const Representation* Contents::find(const PasteboardType& target) const {
    const auto found = std::ranges::find(representations, target, &Representation::target);
    return found == representations.end() ? nullptr : &*found;
}

SharedContents emptyContents() {
    // Klipper replaces an owner without any target by its own last text, and leaves one with this target
    // alone.
    static const PasteboardType hint = "x-kde-passwordManagerHint";
    return std::make_shared<const Contents>(Contents{{{hint, {hint, 8}, shared("secret")}}, true});
}

SharedContents textContents(std::string_view utf8) {
    static const PasteboardType charset = "text/plain;charset=utf-8";
    const SharedBytes bytes = shared(utf8);
    return std::make_shared<const Contents>(Contents{{{"UTF8_STRING", {"UTF8_STRING", 8}, bytes},
                                                      {charset, {charset, 8}, bytes},
                                                      {"text/plain", {"text/plain", 8}, bytes},
                                                      {"STRING", {"STRING", 8}, bytes, true},
                                                      {"TEXT", {"UTF8_STRING", 8}, bytes}}});
}

SharedContents singleContents(Representation representation) {
    Contents contents;
    contents.representations.push_back(std::move(representation));
    return std::make_shared<const Contents>(std::move(contents));
}

bool isProtocolTarget(std::string_view target) {
    static constexpr std::array<std::string_view, 5> names = {"TARGETS", "MULTIPLE", "TIMESTAMP",
                                                              "SAVE_TARGETS", "DELETE"};
    return std::ranges::find(names, target) != names.end() || target.starts_with("INSERT_");
}

} // namespace platform::selection
