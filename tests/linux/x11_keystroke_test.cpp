#include "linux/front_key_window.h"
#include "linux/run_until.h"
#include "support/keys.h"
#include "testing/desktop/fields.h"

#include <X11/XKBlib.h>
#include <unistd.h>

#include <thread>

namespace platform {
namespace {

using testbed::Keyboard;

using testing::ElementsAre;

constexpr CGKeyCode positionOfC = 8;
constexpr CGEventFlags command = kCGEventFlagMaskCommand;

struct Keystroke : testing::Test {
    Keystroke() { run("setxkbmap us -option ''; xset r rate"); }
    ~Keystroke() override { run("setxkbmap us -option ''"); }
};

TEST_F(Keystroke, CarriesItsOwnModifiersWhateverTheUserHoldsAndLeavesNothingDown) {
    for (const std::string keys :
         {"", "Alt_L+Shift_L", "Control_L", "Super_L+Alt_R", "Shift_R+Control_R+Alt_L"}) {
        Keyboard keyboard;
        FrontKeyWindow window;
        if (!keys.empty()) keyboard.hold(keys);
        post(positionOfC, command);
        post(positionOfC, 0);
        keyboard.letGoAll();
        EXPECT_THAT(window.presses(), ElementsAre("Control+c", "c")) << keys;
        EXPECT_TRUE(keyboard.nothingIsHeld()) << keys;
    }
}

TEST_F(Keystroke, IsTypedAtItsReleaseAndOnlyWithOne) {
    Keyboard keyboard;
    FrontKeyWindow window;
    const auto down = CGEventCreateKeyboardEvent(std::nullopt, positionOfC, true);
    CGEventPost(CGEventTapLocation::kCGHIDEventTap, *down);
    EXPECT_THAT(window.presses(), testing::IsEmpty());
    post(positionOfC, command);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c"));
    EXPECT_TRUE(keyboard.nothingIsHeld());
}

TEST_F(Keystroke, LocksChangeNothingAndStay) {
    Keyboard keyboard;
    FrontKeyWindow window;
    keyboard.press("Caps_Lock");
    keyboard.press("Num_Lock");
    EXPECT_EQ(Event::modifierFlags(), kCGEventFlagMaskAlphaShift);
    // As sticky keys do.
    XkbLockModifiers(keyboard.display(), XkbUseCoreKbd, ShiftMask, ShiftMask);
    XkbLatchModifiers(keyboard.display(), XkbUseCoreKbd, Mod1Mask, Mod1Mask);
    XSync(keyboard.display(), False);
    post(positionOfC, command);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c"));
    XkbStateRec state{};
    XkbGetState(keyboard.display(), XkbUseCoreKbd, &state);
    EXPECT_EQ(state.locked_mods, ShiftMask | LockMask | Mod2Mask);
    XkbLockModifiers(keyboard.display(), XkbUseCoreKbd, 0xFF, 0);
    XSync(keyboard.display(), False);
}

TEST_F(Keystroke, ReachesTheKeyOfTheLetterOnEveryLayout) {
    const std::vector<std::string> letters{"Control+c", "Control+a", "Control+v", "Control+z"};
    // No program takes Control with a letter that is not Latin.
    const std::vector<std::string> others{"Control+Insert",     "Control+Home", "Home",
                                          "Control+Shift+End",  "Shift+End",    "Shift+Insert",
                                          "Control+Cyrillic_ya"};
    const struct {
        const char* layout;
        unsigned group;
        std::vector<std::string> typed;
    } cases[] = {
        {"us", 0, letters},    {"de", 0, letters},
        {"fr", 0, letters},    {"us -variant dvorak", 0, letters},
        {"us,ru", 0, letters}, {"us,ru", 1, letters},
        {"ru,us", 0, letters}, {"gr,il,fr", 1, letters},
        {"ru", 0, others},
    };
    for (const auto& [layout, group, typed] : cases) {
        Keyboard keyboard;
        ASSERT_TRUE(run(std::string("setxkbmap ") + layout));
        XkbLockGroup(keyboard.display(), XkbUseCoreKbd, group);
        XSync(keyboard.display(), False);
        FrontKeyWindow window;
        for (const auto& [letter, place] : std::initializer_list<std::pair<char16_t, CGKeyCode>>{
                 {u'c', 8}, {u'a', 0}, {u'v', 9}, {u'z', 6}})
            post(keyThatTypes(letter).value_or(place), command);
        EXPECT_THAT(window.presses(), testing::ElementsAreArray(typed)) << layout << " in group " << group;
    }
}

TEST_F(Keystroke, DeadKeysAndMissingKeysTypeNothing) {
    ASSERT_TRUE(run("setxkbmap de"));
    constexpr CGKeyCode deadAcute = 24; // left of the backspace key
    EXPECT_EQ(typedBy(deadAcute), u"");
    EXPECT_EQ(typedBy(41), u"ö");
    for (const CGKeyCode none : std::initializer_list<CGKeyCode>{0x34, 0x7F, 0x80, 0xFFFF}) {
        EXPECT_FALSE(typedBy(none)) << none;
        EXPECT_FALSE(CGEventCreateKeyboardEvent(std::nullopt, none, true)) << none;
    }
}

TEST_F(Keystroke, NeverCopiesInATerminal) {
    Keyboard keyboard;
    for (const char* terminal : {"XTerm", "Gnome-terminal", "kitty"}) {
        FrontKeyWindow window(terminal);
        post(positionOfC, command);
        post(positionOfC, 0);
        EXPECT_THAT(window.presses(), ElementsAre("c")) << terminal;
    }
}

// The focus moves at each moment from before the guard's last look to after its keystroke.
TEST_F(Keystroke, OfAGuardReachesNoWindowThatGetsTheFocusAtThatMoment) {
    using std::chrono::microseconds;
    testbed::Desktop desktop;
    testbed::Fields other(desktop, {"entry"});
    const auto otherWindow = desktop.windows(other.process().pid()).front();
    FrontKeyWindow window;
    for (microseconds delay{0}; delay < microseconds(1500); delay += microseconds(5)) {
        window.bringToFront();
        KeystrokeGuard guard(getpid(), KeystrokeGuard::Against::otherWindows);
        post(positionOfC, 0);
        const auto leaves = testbed::Clock::now() + delay;
        std::thread person([&] {
            while (testbed::Clock::now() < leaves) {
            }
            XSetInputFocus(desktop.keyboard.display(), otherWindow, RevertToParent, CurrentTime);
            XSync(desktop.keyboard.display(), False);
        });
        guard.deliver();
        person.join();
    }
    desktop.keyboard.press("z"); // once this has arrived, all that was typed before has
    other.awaitText("z");
    EXPECT_THAT(other.dump(), testing::HasSubstr(R"("text": "z")"));
}

} // namespace
} // namespace platform
