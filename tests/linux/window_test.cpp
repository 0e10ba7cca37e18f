#include "linux/print_rect.h"
#include "linux/run_until.h"
#include "platform/linux/application/gtk_start.h"
#include "platform/linux/menu/item.h"
#include "platform/linux/menu/menu_bar.h"
#include "platform/linux/window/native_window.h"
#include "platform/window.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/temporary_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace platform {
namespace {

struct Told : WindowDelegate {
    bool windowShouldClose() override { return false; }
    void windowDidEnterFullScreen() override { calls += "entered "; }
    void windowDidExitFullScreen() override { calls += "left "; }

    std::string calls;
};

// A window as the host makes it, on whatever window manager runs.
struct RealWindow : testing::Test {
    static constexpr Rect place{200, 120, 700, 560};

    void SetUp() override {
        setenv("XDG_STATE_HOME", (state / "").c_str(), 1);
        static const bool started = startGtk();
        ASSERT_TRUE(started);
        make();
    }

    // The next test's window may well get the same number: openbox takes an old wish to be shown for that
    // one's.
    void TearDown() override {
        if (window && gtk().get_visible()) runUntil([this] { return isShown(); });
        window.reset();
        runUntil([this] { return desktop.windows(getpid()).empty(); });
    }

    // The window manager says so, and the X server too.
    bool isShown() {
        const auto managed = desktop.windows(getpid());
        return !managed.empty() && !desktop.isHidden(managed.front());
    }

    void make() {
        window = std::make_unique<Window>(
            Rect{0, 0, 1040, 650}, WindowStyleMaskTitled | WindowStyleMaskClosable | WindowStyleMaskResizable,
            BackingStoreType::buffered, false);
        window->setMinSize({540, 500});
        window->setDelegate(&told);
    }

    void show(const Rect& frame = place) {
        window->setFrame(frame, true);
        window->makeKeyAndOrderFront();
        untilConfirmed(frame);
    }

    // Until the window manager itself says so, with no request of ours open.
    void untilConfirmed(const Rect& frame) {
        runUntil([&] {
            return isShown() && desktop.place(desktop.windows(getpid()).front()).width == frame.width &&
                   window->frame() == frame;
        });
        settle();
        EXPECT_EQ(window->frame(), frame);
    }

    Gtk::Window& gtk() { return window->native().window; }

    const testbed::TemporaryFolder state;
    testbed::Desktop desktop;
    Told told;
    std::unique_ptr<Window> window;
};

TEST_F(RealWindow, ComesUpWhereItWasPlacedBeforeItWasShownAndAgainAfterItWasAway) {
    EXPECT_EQ(window->screen().has_value(), false);
    show();
    EXPECT_TRUE(window->screen());
    window->orderOut();
    EXPECT_FALSE(window->screen());
    EXPECT_EQ(window->frame(), place);
    window->makeKeyAndOrderFront();
    untilConfirmed(place);
}

// With a menu bar, whose height depends on the font too, and without a title, which makes the header bar
// lower.
TEST_F(RealWindow, ContentAndMinimumAreAsAskedWhateverTheFontAlsoOnceItChanges) {
    Menu menu("Bar");
    for (int i = 0; i < 3; ++i) // wider together than the narrowest window
        menu.addItem(std::make_unique<MenuItem>("A menu with a long name", "edit"));
    MenuBar bar(menu);
    const auto useFont = [](const char* font) {
        g_object_set(gtk_settings_get_default(), "gtk-font-name", font, nullptr);
    };
    useFont("Sans 14");
    make();
    window->setContentSize({700, 400});
    window->setMinSize({540, 300});
    window->setTitleVisibility(WindowTitleVisibility::hidden);
    window->native().setMenuBar(bar);
    window->makeKeyAndOrderFront();
    runUntil([this] { return isShown(); });
    for (const char* font : {"Sans 14", "Sans 24", "Sans 8"}) {
        SCOPED_TRACE(font);
        useFont(font);
        const auto& view = window->native().view;
        runUntil([&] { return view.get_allocated_width() == 700 && view.get_allocated_height() == 400; });
        const auto smallest = [&] { return desktop.smallestSize(desktop.windows(getpid()).front()); };
        runUntil([&] { return smallest() == std::pair(540, 300); });
    }
    window->orderOut();
    g_object_set(gtk_settings_get_default(), "gtk-font-name", "Sans 10", nullptr);
    runUntil([this] { return !isShown(); });
    window.reset(); // before the menu bar
}

TEST_F(RealWindow, GrowingTwiceBeforeTheWindowManagerAnswersGrowsTwiceAndShrinkingStopsAtTheMinimum) {
    show();
    for (int i = 0; i < 2; ++i) {
        Rect frame = window->frame();
        frame.y -= 30;
        frame.height += 30;
        window->setFrame(frame, true);
    }
    untilConfirmed({200, 60, 700, 620});
    window->setFrame({300, 300, 10, 10}, true);
    untilConfirmed({300, 300, 540, 500});
}

TEST_F(RealWindow, FullScreenIsInTheMaskAndToldAndLeavesTheFrameAsItWas) {
    show();
    window->setStyleMask(window->styleMask() | WindowStyleMaskFullScreen);
    runUntil([this] { return told.calls == "entered "; });
    EXPECT_TRUE(window->styleMask() & WindowStyleMaskFullScreen);
    window->setStyleMask(window->styleMask() & ~WindowStyleMaskFullScreen);
    runUntil([this] { return told.calls == "entered left "; });
    EXPECT_FALSE(window->styleMask() & WindowStyleMaskFullScreen);
    untilConfirmed(place);
}

TEST_F(RealWindow, KeepsItsFrameButNotThatOfAZoomedWindow) {
    const auto reopened = [this] {
        make();
        window->setFrameAutosaveName("Test");
        return window->frame();
    };
    reopened();
    show();
    window->orderOut();
    EXPECT_EQ(reopened(), place);

    show();
    gtk().maximize();
    runUntil([this] { return window->isZoomed() && window->frame().width > place.width; });
    EXPECT_EQ(reopened(), place);
}

TEST_F(RealWindow, KeptFrameBeyondTheScreenIsBroughtBack) {
    WindowFrameStore("Test").save({-5000, 9000, 9000, 9000});
    window->setFrameAutosaveName("Test");
    EXPECT_EQ(window->frame(), Screen::mainScreen()->visibleFrame());
}

TEST_F(RealWindow, MenuShowsNewTitlesToTheLetter) {
    Menu bar("Bar");
    auto& item = bar.addItem(std::make_unique<MenuItem>("Edit", "edit"));
    item.setSubmenu(std::make_unique<Menu>("Edit"));
    auto& inner = item.submenu()->addItem(std::make_unique<MenuItem>("Copy", "copy"));
    const MenuBar widget(bar);
    item.setTitle("편집_하기");
    inner.setTitle("복사");
    EXPECT_EQ(item.native().widget.get_label(), "편집_하기");
    EXPECT_EQ(inner.native().widget.get_label(), "복사");
    EXPECT_EQ(item.native().widget.get_submenu()->get_children().size(), 1u);
}

} // namespace
} // namespace platform
