// How browsers' texts and offsets are read, without a browser.
#include "platform/linux/at_spi/text_quirks.h"

#include <gtest/gtest.h>

namespace platform::at_spi {
namespace {

TEST(TextQuirks, ChromiumsOffsetsAreRaisedForTheCharactersBeyondTheBasicPlaneBeforeThem) {
    struct Case {
        const char* text;
        CFRange reported;
        std::int64_t caret;
        std::optional<CFRange> meant;
    };
    const Case cases[]{
        {"plain words", {6, 5}, 11, CFRange{6, 5}},
        {"a 😀 b", {0, 1}, 1, CFRange{0, 1}},   // before it
        {"a 😀 b", {2, 2}, 5, std::nullopt},    // it, or what follows: the caret at the end does not tell
        {"a 😀 b", {2, 2}, 3, CFRange{3, 2}},   // the caret at the start does
        {"😀😀 word", {1, 4}, 3, CFRange{3, 4}}, // two of them before it
        {"😀😀 word", {1, 4}, 2, CFRange{2, 5}},
        {"😀😀 word 😀 end", {6, 1}, 9, CFRange{8, 1}}, // the third is at its end
        {"😀😀 word 😀 end", {7, 3}, 13, CFRange{9, 4}},
        {"a 😀😀😀😀", {0, 4}, 6, CFRange{0, 6}}, // two of the four are in six units
        {"a 😀 b", {0, 2}, 3, CFRange{0, 3}},  // the caret tells whether it is in it
        {"a 😀 b", {0, 2}, 2, CFRange{0, 2}},
        {"a 😀 b", {0, 2}, 0, std::nullopt},   // it does not
        {"a 😀 b", {0, 4}, -1, CFRange{0, 5}}, // the caret elsewhere, and one range only
        {"a 😀 b", {1, 1}, -1, std::nullopt},
        {"a 😀 b", {3, 2}, 5, CFRange{3, 2}},   // a version that reports it right
        {"ﬁ é ￼ b", {4, 3}, 7, CFRange{4, 3}}, // none of these is beyond it
    };
    for (const auto& [text, reported, caret, meant] : cases)
        EXPECT_EQ(trueRange(text, reported, caret), meant)
            << text << ' ' << reported.location << '+' << reported.length << ", caret " << caret;
}

TEST(TextQuirks, FirefoxsFillersAreTakenOutWhereItPutsThem) {
    EXPECT_EQ(withoutFillers("a 😀\uFEFF b😀\uFEFF😀\uFEFF"), "a 😀 b😀😀");
    EXPECT_EQ(withoutFillers("\uFEFFnot a\uFEFF filler"), "\uFEFFnot a\uFEFF filler");
    EXPECT_EQ(withoutFillers("😀\uFEFF\uFEFF"), "😀\uFEFF") << "only the one is a filler";
    EXPECT_EQ(withoutFillers("cut 😀\xEF\xBB"), "cut 😀\xEF\xBB");
}

} // namespace
} // namespace platform::at_spi
