#include "linux/front_key_window.h"
#include "linux/run_until.h"
#include "platform/hot_key.h"
#include "platform/linux/x11/base/connection.h"
#include "platform/linux/x11/base/server_time.h"
#include "support/keys.h"
#include "testing/desktop/keyboard.h"

#include <X11/XKBlib.h>
#include <X11/keysym.h>

namespace platform {
namespace {

using testbed::Keyboard;

using testing::ElementsAre;

constexpr std::uint32_t space = 49;
constexpr std::uint32_t altShift = optionKey | shiftKey;
constexpr unsigned xAltShift = Mod1Mask | ShiftMask;
constexpr unsigned lockVariants[]{0, LockMask, Mod2Mask, LockMask | Mod2Mask}; // Caps Lock and Num Lock
constexpr EventTypeSpec press{kEventClassKeyboard, kEventHotKeyPressed};

EventHotKeyRef registerHotKey(std::uint32_t key = space, std::uint32_t modifiers = altShift) {
    return RegisterEventHotKey(key, modifiers, {}, GetApplicationEventTarget(), 0);
}

struct HotKey : testing::Test {
    void SetUp() override {
        run("setxkbmap us -option ''");
        // Without a focus, as between a window's end and the window manager's next choice, the server offers
        // a key to no grab.
        auto* connection = x11::Connection::shared();
        XSetInputFocus(connection->display(), PointerRoot, RevertToPointerRoot, CurrentTime);
        handler = InstallEventHandler(
            GetApplicationEventTarget(),
            [this] {
                ++presses;
                if (onPress) onPress();
                return noErr;
            },
            press);
    }

    void TearDown() override { run("xset r rate"); }

    static void keysRepeatFast() { run("xset r rate 10 200"); } // from 10 ms on, every 5 ms

    // Until a key that is down has repeated several times.
    static void waitForRepeats() {
        const ::Time start = x11::serverTime();
        EXPECT_TRUE(runUntil([&] { return x11::serverTime() > start + 40; }));
    }

    static void holdDown(Keyboard& keyboard) { keyboard.hold("Alt_L+Shift_L+space"); }

    // How many presses have arrived once everything sent so far has been handled.
    int settled() const {
        settle();
        return presses;
    }

    int presses = 0;
    std::function<void()> onPress;
    EventHandlerRef handler;
};

// Another program's attempt to have a combination; true when it got it. It keeps it for as long as `keyboard`
// lives.
bool otherProgramGrabs(Keyboard& keyboard, unsigned modifiers) {
    static bool refused = false;
    refused = false;
    const auto previous = XSetErrorHandler([](Display*, XErrorEvent*) {
        refused = true;
        return 0;
    });
    XGrabKey(keyboard.display(), XKeysymToKeycode(keyboard.display(), XK_space), modifiers,
             DefaultRootWindow(keyboard.display()), False, GrabModeAsync, GrabModeAsync);
    XSync(keyboard.display(), False);
    XSetErrorHandler(previous);
    return !refused;
}

TEST_F(HotKey, OnePressOfItRunsTheHandlersOnceWhateverIsLocked) {
    const EventHotKeyRef hotKey = registerHotKey();
    ASSERT_TRUE(hotKey);
    keysRepeatFast();
    for (const unsigned locks : lockVariants) {
        Keyboard keyboard;
        XkbLockModifiers(keyboard.display(), XkbUseCoreKbd, LockMask | Mod2Mask, locks);
        presses = 0;
        holdDown(keyboard);
        waitForRepeats();
        EXPECT_EQ(presses, 1) << "locks " << locks;
        keyboard.letGoAll();
        holdDown(keyboard);
        EXPECT_EQ(settled(), 2) << "locks " << locks;
        XkbLockModifiers(keyboard.display(), XkbUseCoreKbd, LockMask | Mod2Mask, 0);
    }
}

TEST_F(HotKey, IsRefusedWholeWhenAnotherProgramHoldsAnyVariantOfIt) {
    for (const unsigned locks : lockVariants) {
        {
            Keyboard holder;
            ASSERT_TRUE(otherProgramGrabs(holder, xAltShift | locks));
            EXPECT_FALSE(registerHotKey()) << "locks " << locks;
            Keyboard other;
            for (const unsigned free : lockVariants)
                EXPECT_EQ(otherProgramGrabs(other, xAltShift | free), free != locks)
                    << "left behind: " << free;
        }
        EXPECT_TRUE(runUntil([] { return registerHotKey() != nullptr; })) << "locks " << locks;
    }
    EXPECT_FALSE(registerHotKey(0x34)) << "there is no such key";
    EXPECT_FALSE(registerHotKey(0x10000 + space)) << "nor this one";
}

TEST_F(HotKey, LetsAKeystrokeThroughWhileHeldAndNoRepeatOfItsOwnKey) {
    const EventHotKeyRef hotKey = registerHotKey();
    Keyboard keyboard;
    FrontKeyWindow window;
    onPress = [] { post(8, kCGEventFlagMaskCommand); };
    holdDown(keyboard);
    EXPECT_EQ(settled(), 1);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c"));
    keyboard.letGo("space"); // what a repeat looks like here: the key's press with no modifiers
    keyboard.hold("space");
    settle();
    keyboard.letGo("space+Alt_L"); // the user lifts one finger before the others
    keyboard.hold("space");
    settle();
    keyboard.letGoAll();
    EXPECT_THAT(window.presses(), ElementsAre("Control+c"));
    EXPECT_TRUE(runUntil([&] {
        settle(); // or these presses would leave the loop no turn for anything else
        keyboard.press("space");
        return window.presses().size() > 1;
    })) << "the key must be the program's again once it has come up";
    holdDown(keyboard);
    EXPECT_EQ(settled(), 2);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c", "space", "Control+c"));
}

TEST_F(HotKey, MayBeTheKeystrokeThatTheHostTypes) {
    const EventHotKeyRef hotKey = registerHotKey(8, controlKey);
    Keyboard keyboard;
    FrontKeyWindow window;
    post(8, kCGEventFlagMaskCommand);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c"));
    EXPECT_EQ(settled(), 0);
    keyboard.press("Control+c");
    EXPECT_EQ(settled(), 1);
}

TEST_F(HotKey, MayBeAKeyAlone) {
    const EventHotKeyRef hotKey = registerHotKey(0x6D, 0); // F10
    Keyboard keyboard;
    FrontKeyWindow window;
    onPress = [] { post(8, kCGEventFlagMaskCommand); };
    keysRepeatFast();
    keyboard.hold("F10");
    waitForRepeats();
    EXPECT_EQ(presses, 1);
    keyboard.letGo("F10");
    EXPECT_TRUE(runUntil([&] {
        keyboard.press("F10");
        return settled() == 2;
    }));
}

TEST_F(HotKey, FollowsItsModifiersWhenTheKeyboardChanges) {
    const EventHotKeyRef hotKey = registerHotKey();
    const char* changes[]{"setxkbmap fr,ru -option grp:win_space_toggle",
                          "xmodmap -e 'clear mod1' -e 'clear mod3' -e 'add mod3 = Alt_L'",
                          "setxkbmap us -option ''"};
    for (const char* change : changes) {
        Keyboard keyboard;
        ASSERT_TRUE(run(change));
        settle();
        presses = 0;
        holdDown(keyboard);
        EXPECT_EQ(settled(), 1) << change;
    }
}

} // namespace
} // namespace platform
