// The window's fixed look, and how the host starts.
#include "app/main_menu.h"
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

namespace {

// Every item's identifier and shortcut, menu by menu; "-" is a separator.
void list(const platform::Menu& menu, std::string& names) {
    for (const auto& item : menu.itemArray()) {
        const bool isSeparator = !item->action() && item->submenu() == nullptr;
        names += isSeparator ? "-" : item->identifier().value_or("NAMELESS");
        const auto modifiers = item->keyEquivalentModifierMask();
        if (modifiers != 0 || !item->keyEquivalent().empty()) names += "=" + item->keyEquivalent();
        if (modifiers & platform::kCGEventFlagMaskShift) names += "+Shift";
        names += ' ';
        if (item->submenu()) list(*item->submenu(), names);
    }
}

struct MainMenu : testing::Test, Host {
    MainMenu() { platform::Application::sharedApplication().setMainMenu(makeMainMenu()); }
};

} // namespace

TEST_F(MainMenu, EveryItemHasTheKeyThatInterfacesRelabelItByAndItsShortcut) {
    std::string names;
    list(*world.mainMenu, names);
    EXPECT_EQ(names, "nativeApplication nativeAbout - nativeQuit=q nativeEdit nativeUndo=z "
                     "nativeRedo=z+Shift - nativeCut=x "
                     "nativeCopy=c nativePaste=v - nativeSelectAll=a nativeView nativeFullScreen=F11 "
                     "nativeWindow nativeMinimize nativeZoom nativeHelp nativeShowHelp ");
}

TEST_F(MainMenu, ItemsActOrAreGreyed) {
    EXPECT_FALSE(world.userChooses("nativePaste")) << "nothing takes the keys";
    world.interfaceTakesKeys = true;
    EXPECT_TRUE(world.userChooses("nativePaste"));
    world.settle();
    EXPECT_THAT(world.performedActions, testing::ElementsAre(platform::Selector::paste));
    call("localize", flutter::EncodableMap{{"nativeExitFullScreen", "Leave"}, {"nativeFullScreen", "Fill"}});
    for (const char* label : {"Leave", "Fill"}) {
        EXPECT_TRUE(world.userChooses("nativeFullScreen"));
        world.settle();
        EXPECT_EQ(world.menuItem("nativeFullScreen")->title(), label);
    }
    call("initialize");
    EXPECT_TRUE(world.userChooses("nativeQuit"));
    world.settle();
    EXPECT_THAT(calledMethods(), testing::ElementsAre("quit"));
}
