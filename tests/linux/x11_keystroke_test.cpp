#include "linux/x11_programs.h"
#include "support/key_that_types.h"

#include <X11/XKBlib.h>

namespace platform::x11test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr CGKeyCode positionOfC = 8;
constexpr CGEventFlags command = kCGEventFlagMaskCommand;

class Keystroke : public testing::Test {
protected:
    void SetUp() override {
        if (!hasDisplay()) GTEST_SKIP() << "no display";
        run("setxkbmap us -option ''; xset r rate");
    }
    void TearDown() override {
        if (hasDisplay()) run("setxkbmap us -option ''");
    }
};

TEST_F(Keystroke, CarriesItsOwnModifiersWhateverTheUserHoldsAndLeavesNothingDown) {
    const std::vector<std::vector<std::string>> held{
        {}, {"Alt_L", "Shift_L"}, {"Control_L"}, {"Super_L", "Alt_R"}, {"Shift_R", "Control_R", "Alt_L"}};
    for (const auto& keys : held) {
        Person person;
        KeyWindow window;
        for (const auto& key : keys)
            person.press(key);
        post(positionOfC, command);
        post(positionOfC, 0);
        person.releaseAll();
        EXPECT_THAT(window.presses(), ElementsAre("Control+c", "c")) << testing::PrintToString(keys);
        EXPECT_TRUE(person.nothingIsHeld()) << testing::PrintToString(keys);
    }
}

TEST_F(Keystroke, LetsGoOfEverythingWhenTheUserLetsGoInTheMiddleOrTheReleaseNeverComes) {
    Person person;
    KeyWindow window;
    person.press("Alt_L");
    auto down = CGEventCreateKeyboardEvent(std::nullopt, positionOfC, true);
    auto up = CGEventCreateKeyboardEvent(std::nullopt, positionOfC, false);
    CGEventSetFlags(*down, command | kCGEventFlagMaskShift);
    CGEventPost(CGEventTapLocation::kCGHIDEventTap, *down);
    person.release("Alt_L");
    person.tap("Shift_L");
    CGEventPost(CGEventTapLocation::kCGHIDEventTap, *down);
    CGEventPost(CGEventTapLocation::kCGHIDEventTap, *up);
    EXPECT_THAT(window.presses(), ElementsAre("Control+Shift+c", "Control+Shift+c"));
    EXPECT_TRUE(person.nothingIsHeld());
}

TEST_F(Keystroke, LocksChangeNothingAndStay) {
    Person person;
    KeyWindow window;
    person.tap("Caps_Lock");
    person.tap("Num_Lock");
    EXPECT_EQ(Event::modifierFlags(), kCGEventFlagMaskAlphaShift);
    // As sticky keys do.
    XkbLockModifiers(person.display(), XkbUseCoreKbd, ShiftMask, ShiftMask);
    XkbLatchModifiers(person.display(), XkbUseCoreKbd, Mod1Mask, Mod1Mask);
    XSync(person.display(), False);
    post(positionOfC, command);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c"));
    XkbStateRec state{};
    XkbGetState(person.display(), XkbUseCoreKbd, &state);
    EXPECT_EQ(state.locked_mods, ShiftMask | LockMask | Mod2Mask);
    XkbLockModifiers(person.display(), XkbUseCoreKbd, 0xFF, 0);
    XSync(person.display(), False);
}

TEST_F(Keystroke, HeldModifiersAreNamedAfterTheirKeys) {
    Person person;
    const std::vector<std::pair<std::string, CGEventFlags>> keys{
        {"Shift_R", kCGEventFlagMaskShift},
        {"Control_L", kCGEventFlagMaskControl},
        {"Alt_L", kCGEventFlagMaskAlternate},
        {"Super_L", kCGEventFlagMaskCommand},
        {"space", 0},
    };
    for (const auto& [key, flag] : keys) {
        person.press(key);
        EXPECT_EQ(Event::modifierFlags(), flag) << key;
        person.release(key);
        EXPECT_EQ(Event::modifierFlags(), 0U) << key;
    }
}

TEST_F(Keystroke, ReachesTheKeyOfTheLetterOnEveryLayout) {
    struct Case {
        const char* layout;
        unsigned group;
        std::vector<std::string> typed;
    };
    const std::vector<std::string> letters{"Control+c", "Control+a", "Control+v", "Control+z"};
    const std::vector<Case> cases{
        {"us", 0, letters},
        {"de", 0, letters},
        {"fr", 0, letters},
        {"us -variant dvorak", 0, letters},
        {"us,ru", 0, letters},
        {"us,ru", 1, letters},
        {"ru,us", 0, letters},
        {"gr,il,fr", 1, letters},
        // No program takes Control with a letter that is not Latin.
        {"ru",
         0,
         {"Control+Insert", "Control+Home", "Home", "Control+Shift+End", "Shift+End", "Shift+Insert",
          "Control+Cyrillic_ya"}},
    };
    for (const auto& [layout, group, typed] : cases) {
        Person person;
        ASSERT_TRUE(run(std::string("setxkbmap ") + layout));
        XkbLockGroup(person.display(), XkbUseCoreKbd, group);
        XSync(person.display(), False);
        KeyWindow window;
        post(keyThatTypes(u'c').value_or(8), command);
        post(keyThatTypes(u'a').value_or(0), command);
        post(keyThatTypes(u'v').value_or(9), command);
        post(keyThatTypes(u'z').value_or(6), command);
        EXPECT_THAT(window.latinPresses(), testing::ElementsAreArray(typed))
            << layout << " in group " << group;
    }
}

TEST_F(Keystroke, DeadKeysAndMissingKeysTypeNothing) {
    ASSERT_TRUE(run("setxkbmap de"));
    constexpr CGKeyCode deadAcute = 24; // left of the backspace key
    std::uint32_t deadKeyState = 0;
    const auto source = TISCopyCurrentASCIICapableKeyboardLayoutInputSource();
    const auto layout =
        TISGetInputSourceProperty(source, InputSourceProperty::kTISPropertyUnicodeKeyLayoutData);
    ASSERT_TRUE(layout);
    const auto translate = [&](CGKeyCode key) {
        return UCKeyTranslate(*layout, key, KeyAction::kUCKeyActionDown, 0, LMGetKbdType(), 0, deadKeyState,
                              4);
    };
    EXPECT_EQ(translate(deadAcute), u"");
    EXPECT_EQ(translate(41), u"ö");
    for (const CGKeyCode none : std::initializer_list<CGKeyCode>{0x34, 0x7F, 0x80, 0xFFFF}) {
        EXPECT_FALSE(translate(none)) << none;
        EXPECT_FALSE(CGEventCreateKeyboardEvent(std::nullopt, none, true)) << none;
    }
}

TEST_F(Keystroke, NeverCopiesInATerminal) {
    Person person;
    for (const char* terminal : {"XTerm", "Gnome-terminal", "kitty"}) {
        KeyWindow window(terminal);
        post(positionOfC, command);
        post(positionOfC, 0);
        EXPECT_THAT(window.presses(), ElementsAre("c")) << terminal;
    }
}

} // namespace
} // namespace platform::x11test
