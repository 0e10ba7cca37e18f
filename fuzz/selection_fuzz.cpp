// What another program delivers for a copy: any bytes of any type.
#include "check.h"
#include "flutter/utf8.h"
#include "platform/linux/x11/pasteboard/contents.h"
#include "platform/linux/x11/pasteboard/text.h"

#include <array>

using namespace platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static constexpr std::array types{"UTF8_STRING", "STRING", "COMPOUND_TEXT", "TEXT",
                                      "text/plain;charset=utf-16"};
    const std::string_view type = types[data[0] % types.size()];
    const std::span bytes(data + 1, size - 1);

    const auto text = selection::utf8FromDelivered(asText(bytes), type);
    check(flutter::isUtf8(text));
    selection::latin1FromUtf8(asText(bytes));
    const auto contents = selection::textContents(text);
    for (const auto& representation : contents->representations)
        check(contents->find(representation.target) != nullptr && representation.delivered() != nullptr);
    selection::isProtocolTarget(asText(bytes));
    return 0;
}
