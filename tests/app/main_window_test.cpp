// The window's fixed look, and how the host starts.
#include "support/host.h"

#include <gmock/gmock.h>

TEST(MainWindow, AwakesWithItsFixedConfiguration) {
    Host host;
    const auto& window = host.windowState();
    EXPECT_EQ((platform::Size{window.frame.width, window.frame.height}), (platform::Size{1040, 650}));
    EXPECT_EQ(window.minSize, (platform::Size{540, 500}));
    EXPECT_EQ(window.title, "글빛나래 · Quillmark");
    EXPECT_EQ(window.titleVisibility, platform::WindowTitleVisibility::hidden);
    EXPECT_TRUE(window.titlebarAppearsTransparent && window.movableByWindowBackground && window.awoken);
    EXPECT_EQ(window.styleMask, 0x800Fu);
    EXPECT_EQ(window.collectionBehavior, 258u);
    EXPECT_EQ(window.frameAutosaveName, "QuillmarkFlutterMain");
    EXPECT_FALSE(window.releasedWhenClosed);
    EXPECT_EQ(window.delegate, host.window.get());
    const auto screen = host.world.screens[0];
    EXPECT_NEAR(window.frame.x, (screen.width - 1040) / 2, 1);
}

TEST(MainWindow, ComesBackWhereTheUserLeftIt) {
    Host host;
    host.world.savedFrames["QuillmarkFlutterMain"] = {20, 30, 800, 600};
    auto again = std::make_shared<MainFlutterWindow>(platform::Rect{}, 0u,
                                                     platform::BackingStoreType::buffered, false);
    again->awakeFromNib();
    EXPECT_EQ(again->frame(), (platform::Rect{20, 30, 800, 600}));
}

TEST(MainWindow, OpensTheModelsChannelsToo) {
    Host host;
    const auto success = flutter::encodeSuccessEnvelope({});
    for (const auto& [channel, method] : {std::pair{"quillmark.quillmark/system_model", "prewarm"},
                                          std::pair{"quillmark.quillmark/system_model/events", "listen"}}) {
        const auto answer = host.world.interface().ask(channel, flutter::encodeMethodCall({method, {}}));
        host.world.settle();
        EXPECT_EQ(answer->bytes, success) << channel;
    }
}
