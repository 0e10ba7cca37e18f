// Key combinations as programs write them in their settings.
#include "platform/linux/checks/key_words.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(KeyWords, AreTheSameHoweverAProgramWritesThem) {
    const KeyWords wanted{{"alt", "shift"}, "space"};
    for (const char* text : {"Alt+Shift+space", "<Shift><Alt>space", "S-A-Space", "Mod1+Shift+space",
                             "&lt;Alt&gt;&lt;Shift&gt;space", "<Alt><Shift><Alt>SPACE"})
        EXPECT_EQ(readKeyWords(text), wanted) << text;
    for (const char* text : {"", "space", "<Alt>space", "<Super><Alt><Shift>space", "Alt+Shift+s",
                             "Alt+Shift", "Alt Shift of space", "<>"})
        EXPECT_NE(readKeyWords(text), wanted) << text;
    EXPECT_EQ(readKeyWords("A-S-a"), (KeyWords{{"alt", "shift"}, "a"})) << "a key, not a modifier";
}

} // namespace
