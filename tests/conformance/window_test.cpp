#include "conformance/stage.h"
#include "platform/application.h"
#include "platform/workspace.h"

#include <gtest/gtest.h>

namespace conformance {
namespace {

using namespace platform;

struct WindowTest : testing::Test {
    Stage stage;
    Window window{{100, 100, 400, 300},
                  WindowStyleMaskTitled | WindowStyleMaskClosable | WindowStyleMaskMiniaturizable |
                      WindowStyleMaskResizable,
                  BackingStoreType::buffered,
                  false};

    void show() {
        window.makeKeyAndOrderFront();
        ASSERT_TRUE(stage.runUntil([&] { return stage.shown(window) && window.screen().has_value(); }));
    }

    static std::optional<RunningApplication> frontmost() {
        return Workspace::sharedWorkspace().frontmostApplication();
    }
};

TEST_F(WindowTest, ComesToTheFrontWithItsProgramAndGivesWay) {
    const auto program = stage.open({.value = "text"});
    const auto source = frontmost();
    ASSERT_TRUE(source.has_value());
    Application::sharedApplication().activate();
    show();
    EXPECT_TRUE(stage.runUntil([] { return frontmost() == RunningApplication::currentApplication(); }));
    window.orderOut();
    EXPECT_TRUE(stage.runUntil([&] { return !stage.shown(window) && !window.screen(); }));
    EXPECT_TRUE(source->activateFromApplication(RunningApplication::currentApplication()));
    EXPECT_TRUE(stage.runUntil([&] { return frontmost() == source; }));
    show();
}

TEST_F(WindowTest, KeepsItsTitleSizeAndPlace) {
    window.setTitle("글빛나래");
    EXPECT_EQ(window.title(), "글빛나래");
    window.setMinSize({200, 150});
    window.setContentSize({420, 320});
    window.center();
    show();
    EXPECT_GT(window.screen()->visibleFrame().height, 320);
    EXPECT_GE(window.frame().width, 420);
    EXPECT_GE(window.frame().height, 320);

    const Rect before = window.frame();
    const Rect taller{before.x, before.y - 60, before.width, before.height + 60};
    window.setFrame(taller, true);
    EXPECT_TRUE(stage.runUntil([&] { return window.frame() == taller; }))
        << window.frame().y << " " << window.frame().height;
    EXPECT_EQ(window.frame().top(), before.top()) << "it grew downwards";
    EXPECT_FALSE(window.isZoomed());
    EXPECT_EQ(window.styleMask() & WindowStyleMaskFullScreen, 0u);
}

TEST_F(WindowTest, IsMinimisedAndComesBack) {
    show();
    window.miniaturize();
    EXPECT_TRUE(stage.runUntil([&] { return stage.minimised(window); }));
    window.deminiaturize();
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(stage.runUntil([&] { return !stage.minimised(window) && stage.shown(window); }));
}

TEST_F(WindowTest, FloatsAboveOthersOnlyWhileItsLevelSaysSo) {
    show();
    window.setLevel(FloatingWindowLevel);
    EXPECT_TRUE(stage.runUntil([&] { return stage.keptAbove(window); }));
    window.setLevel(NormalWindowLevel);
    EXPECT_TRUE(stage.runUntil([&] { return !stage.keptAbove(window); }));
}

} // namespace
} // namespace conformance
