#include "linux/front_key_window.h"
#include "linux/run_until.h"
#include "platform/hot_key.h"
#include "platform/linux/x11/base/server_time.h"
#include "platform/linux/x11/base/xlib_connection.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "support/keys.h"
#include "testing/desktop/keyboard.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/keysym.h>

#include <array>
#include <atomic>
#include <semaphore>
#include <thread>
#include <tuple>

namespace platform {
namespace {

using testbed::Keyboard;

using testing::Each;
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
        auto* connection = x11::XlibConnection::shared();
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

// Another program's attempt to have a combination in the way of GNOME Shell; it keeps it for as long as
// `keyboard` lives.
bool otherProgramGrabsThroughXInput(Keyboard& keyboard, unsigned modifiers) {
    int major = 2;
    int minor = 2;
    XIQueryVersion(keyboard.display(), &major, &minor);
    std::array<unsigned char, XIMaskLen(XI_KeyPress)> mask{};
    XISetMask(mask.data(), XI_KeyPress);
    XIEventMask events{XIAllMasterDevices, int{mask.size()}, mask.data()};
    XIGrabModifiers wanted{static_cast<int>(modifiers), 0};
    return XIGrabKeycode(keyboard.display(), XIAllMasterDevices,
                         XKeysymToKeycode(keyboard.display(), XK_space),
                         DefaultRootWindow(keyboard.display()), XIGrabModeAsync, XIGrabModeAsync, False,
                         &events, 1, &wanted) == 0;
}

// The same with a grab of the core protocol.
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
        EXPECT_EQ(settled(), 1) << "locks " << locks;
        EXPECT_NE(x11::lastUsedKeyboard(), x11::syntheticKeyboard()) << "programs read the layout anew";
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
    {
        Keyboard holder;
        ASSERT_TRUE(otherProgramGrabsThroughXInput(holder, xAltShift | LockMask));
        EXPECT_FALSE(registerHotKey());
    }
    EXPECT_TRUE(runUntil([] { return registerHotKey() != nullptr; }));
    EXPECT_FALSE(registerHotKey(0x34)) << "there is no such key";
    EXPECT_FALSE(registerHotKey(0x10000 + space)) << "nor this one";
}

TEST_F(HotKey, LetsAKeystrokeThroughWhileHeldAndNoRepeatOfItsOwnKey) {
    // Also when it is the key that the host types: then it is down already.
    for (const auto& [key, modifiers, keys] :
         {std::tuple(space, altShift, "Alt_L+Shift_L+space"), std::tuple(8U, optionKey, "Alt_L+c")}) {
        const EventHotKeyRef hotKey = registerHotKey(key, modifiers);
        Keyboard keyboard;
        FrontKeyWindow window;
        keysRepeatFast();
        presses = 0;
        onPress = [] { post(8, kCGEventFlagMaskCommand); };
        keyboard.hold(keys);
        waitForRepeats();
        EXPECT_EQ(settled(), 1) << keys;
        keyboard.letGoAll();
        settle();
        EXPECT_THAT(window.presses(), ElementsAre("Control+c")) << keys;
        EXPECT_EQ(window.loneAlts(), 0) << keys;
        EXPECT_TRUE(keyboard.nothingIsHeld()) << keys;
    }
}

TEST_F(HotKey, EachPressOfItCountsHoweverTheModifiersAreHeld) {
    const EventHotKeyRef hotKey = registerHotKey();
    Keyboard keyboard;
    FrontKeyWindow window;
    onPress = [] { post(8, kCGEventFlagMaskCommand); };
    keyboard.hold("Alt_L+Shift_L");
    for (int count = 1; count <= 3; ++count) {
        keyboard.press("space");
        EXPECT_EQ(settled(), count);
    }
    keyboard.letGo("Alt_L"); // the program knows nothing of the Shift that is still held
    keyboard.press("space");
    EXPECT_EQ(settled(), 3);
    keyboard.letGo("Shift_L");
    settle();
    keyboard.press("space");
    EXPECT_EQ(settled(), 3);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c", "Control+c", "Control+c", "space"));
}

TEST_F(HotKey, APressCountsThoughItsModifiersAreLetGoBeforeItIsHandled) {
    const EventHotKeyRef hotKey = registerHotKey();
    Keyboard keyboard;
    FrontKeyWindow window;
    onPress = [&] {
        post(8, kCGEventFlagMaskCommand);
        if (presses > 1) return;
        keyboard.letGo("space");
        keyboard.press("space");
        keyboard.letGoAll();
        keyboard.press("a");
        keyboard.press("space");
    };
    holdDown(keyboard);
    EXPECT_TRUE(runUntil([&] { return presses == 2; }));
    EXPECT_EQ(settled(), 2);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c", "a", "space", "Control+c"));
}

TEST_F(HotKey, WhileItsHandlerRunsAnotherPressCountsAndWhatIsTypedArrives) {
    const EventHotKeyRef hotKey = registerHotKey();
    FrontKeyWindow window;
    std::binary_semaphore handlerRuns(0);
    std::atomic<bool> typed = false;
    std::jthread person([&] {
        Keyboard keyboard;
        holdDown(keyboard);
        handlerRuns.acquire();
        keyboard.letGoAll();
        for (const char* key : {"a", "space", "b", "space"})
            keyboard.press(key);
        keyboard.press("Alt_L+Shift_L+space");
        typed = true;
    });
    onPress = [&] {
        if (presses > 1) return;
        post(8, kCGEventFlagMaskCommand);
        handlerRuns.release();
        EXPECT_TRUE(testbed::waitUntil([&] { // as the host waits for a copy
            usleep(20'000);
            return typed.load();
        }));
    };
    EXPECT_TRUE(runUntil([&] { return presses == 2; }));
    EXPECT_EQ(settled(), 2);
    EXPECT_THAT(window.presses(), ElementsAre("Control+c", "a", "space", "b", "space"));
}

TEST_F(HotKey, HeldModifiersCountAfterAPressThatHasHeldUpTheHostsOwnKeystroke) {
    const EventHotKeyRef hotKey = registerHotKey();
    for (const bool programsSeeThem : {true, false}) {
        SCOPED_TRACE(programsSeeThem);
        Keyboard keyboard;
        FrontKeyWindow window;
        presses = 0;
        keyboard.hold("Alt_L+Shift_L");
        if (!programsSeeThem) post(8, kCGEventFlagMaskCommand); // releases them
        settle();
        keyboard.press("space"); // until it is handled, the keyboard is the host's
        post(8, kCGEventFlagMaskCommand);
        EXPECT_EQ(settled(), 1);
        for (int count = 2; count <= 3; ++count) {
            keyboard.press("space");
            EXPECT_EQ(settled(), count);
        }
        EXPECT_THAT(window.presses(), Each("Control+c"));
    }
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
    EXPECT_EQ(settled(), 1);
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
