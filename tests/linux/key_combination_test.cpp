// Key combinations as programs write them in their settings.
#include "platform/linux/checks/key_combination.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(KeyCombination, IsTheSameHoweverAProgramWritesIt) {
    const KeyCombination wanted{{"alt", "shift"}, "space"};
    for (const char* text : {"Alt+Shift+space", "<Shift><Alt>space", "S-A-Space", "Mod1+Shift+space",
                             "&lt;Alt&gt;&lt;Shift&gt;space", "<Alt><Shift><Alt>SPACE"})
        EXPECT_EQ(readKeyCombination(text), wanted) << text;
    for (const char* text : {"", "space", "<Alt>space", "<Super><Alt><Shift>space", "Alt+Shift+s",
                             "Alt+Shift", "Alt Shift of space", "<>"})
        EXPECT_NE(readKeyCombination(text), wanted) << text;
    EXPECT_EQ(readKeyCombination("A-S-a"), (KeyCombination{{"alt", "shift"}, "a"}))
        << "a key, not a modifier";
}

} // namespace
