// The desktop channel: what each call answers, whatever it is given.
#include "flutter/arguments.h"
#include "platform/url.h"
#include "support/host.h"

#include <gmock/gmock.h>

#include <limits>

using flutter::EncodableMap;
using flutter::EncodableValue;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct DesktopChannel : testing::Test, Host {};

struct Expectation {
    const char* method;
    EncodableValue arguments;
    const char* answer;
};

} // namespace

TEST_F(DesktopChannel, AnswersEveryCallAsTheMethodTableSays) {
    const EncodableMap numberedKey{{7, "seven"}};
    const Expectation table[]{
        {"show", "ignored", "null"},
        {"hide", {}, "null"},
        {"pin", EncodableMap{}, "null"},
        {"growHeight", "100", "null"},
        {"cancelQuit", {}, "null"},
        {"requestPermission", {}, "null"},
        {"localize", EncodableMap{{"a", 1}}, "null"},
        {"initialize", numberedKey, "hotkey_registered=true"},
        {"excludeModelBackups", 7, "error path: Missing model directory"},
        {"openPath", {}, "error open_path: Could not open the file or folder"},
        {"openUrl", true, "error open_url: Could not open the link"},
        {"paste", numberedKey, "copied-only"},
        {"Show", {}, "not implemented"},
        {"close", {}, "not implemented"},
        {"capture", {}, "not implemented"},
        {"", {}, "not implemented"},
    };
    for (const auto& [method, arguments, answer] : table)
        EXPECT_EQ(call(method, arguments).text(), answer) << method;
}

TEST_F(DesktopChannel, GivesAnUndecodableCallTheEmptyReplyAndGoesOn) {
    const auto answer = world.interface().ask("quillmark.quillmark/desktop", {0x07, 0xff});
    world.settle();
    EXPECT_THAT(answer->bytes, testing::Optional(IsEmpty()));
    EXPECT_EQ(call("show").text(), "null");
}

TEST_F(DesktopChannel, IsSilentOnceTheBridgeIsGone) {
    auto controller = std::make_unique<flutter::ViewController>();
    DesktopBridge::create({}, *controller).reset();
    EXPECT_EQ(call("show").text(), "unanswered");
}

TEST_F(DesktopChannel, OpensOnlyWebAndMailLinks) {
    for (const auto* link : {"https://example.org/a?b#c", "HTTPS://example.org", "mailto:anna@example.org"})
        EXPECT_EQ(call("openUrl", link).text(), "null") << link;
    EXPECT_EQ(world.openedLinks.size(), 3u);
    for (const auto* link :
         {"http://example.org", "file:///etc/passwd", "example.org", "https://exa mple.org", ""})
        EXPECT_EQ(call("openUrl", link).text(), "error open_url: Could not open the link") << link;
    EXPECT_EQ(world.openedLinks.size(), 3u) << "what is refused is never handed on";
    world.opensLinks = false;
    EXPECT_EQ(call("openUrl", "https://example.org").text(), "error open_url: Could not open the link");
}

TEST_F(DesktopChannel, OpensPathsAndKeepsTheModelOutOfBackups) {
    EXPECT_EQ(call("openPath", "/home/anna/My letters").text(), "null");
    EXPECT_THAT(world.openedLinks,
                ElementsAre(platform::URL::fileURLWithPath("/home/anna/My letters").absoluteString()));
    world.opensLinks = false;
    EXPECT_EQ(call("openPath", "/home/anna").text(), "error open_path: Could not open the file or folder");

    EXPECT_EQ(call("excludeModelBackups", "/models").text(), "null");
    EXPECT_EQ(world.excludedFromBackup.size(), 1u);
    world.backupFailure = "The folder is read-only.";
    EXPECT_EQ(call("excludeModelBackups", "/others").text(), "error backup: The folder is read-only.");
}

TEST_F(DesktopChannel, AsksForThePermissionOnRequest) {
    world.trusted = false;
    EXPECT_EQ(call("requestPermission").text(), "null");
    EXPECT_EQ(world.permissionPrompts, 1);
}

TEST_F(DesktopChannel, ShowsHidesAndPinsTheWindow) {
    call("hide");
    EXPECT_TRUE(windowState().miniaturized && !windowState().closed);
    ASSERT_THAT(calledMethods(), ElementsAre("close"));
    EXPECT_EQ(calls()[0].arguments, EncodableValue{EncodableMap{}});
    call("show");
    EXPECT_TRUE(!windowState().miniaturized && windowState().key && world.hostInFront());

    call("pin", true);
    EXPECT_EQ(windowState().level, 3);
    for (const EncodableValue& other : {EncodableValue{"true"}, EncodableValue{1}, EncodableValue{}}) {
        call("pin", true);
        call("pin", other);
        EXPECT_EQ(windowState().level, 0);
    }
}

TEST_F(DesktopChannel, GrowsTheWindowDownwardsWithinItsScreen) {
    world.screens = {{0, 50, 1440, 800}};
    call("show");
    const auto grown = [&](platform::Rect frame, EncodableValue points) {
        window->setFrame(frame, false);
        call("growHeight", points);
        return window->frame();
    };
    EXPECT_EQ(grown({10, 200, 700, 600}, 100), (platform::Rect{10, 100, 700, 700}));
    EXPECT_EQ(windowState().redisplays, 1);
    EXPECT_EQ(grown({10, 200, 700, 600}, 0.5), (platform::Rect{10, 199.5, 700, 600.5}));
    EXPECT_EQ(grown({10, 100, 700, 600}, 100), (platform::Rect{10, 50, 700, 700}))
        << "lifted onto the bottom edge";
    EXPECT_EQ(grown({10, 400, 700, 600}, 100), (platform::Rect{10, 150, 700, 700}))
        << "brought under the top edge";
    EXPECT_EQ(grown({10, 200, 700, 600}, 1e300), (platform::Rect{10, 50, 700, 800}));

    constexpr platform::Rect frame{10, 200, 700, 600};
    for (const EncodableValue& nothing : {EncodableValue{0}, EncodableValue{-5}, EncodableValue{"5"},
                                          EncodableValue{std::numeric_limits<double>::quiet_NaN()}})
        EXPECT_EQ(grown(frame, nothing), frame);
    window->native().zoomed = true;
    EXPECT_EQ(grown(frame, 100), frame);
    window->native().zoomed = false;
    window->setStyleMask(window->styleMask() | platform::WindowStyleMaskFullScreen);
    EXPECT_EQ(grown(frame, 100), frame);
    window->setStyleMask(window->styleMask() & ~platform::WindowStyleMaskFullScreen);
    EXPECT_EQ(grown({5000, 200, 700, 600}, 100), (platform::Rect{5000, 100, 700, 700}))
        << "on no screen, the main screen counts";
    world.screens.push_back({1440, 0, 1440, 1200});
    EXPECT_EQ(grown({1500, 500, 700, 600}, 600), (platform::Rect{1500, 0, 700, 1200})) << "on its own screen";
    world.screens.clear();
    EXPECT_EQ(grown(frame, 100), frame);
}

TEST_F(DesktopChannel, AnswersWithoutItsWindow) {
    auto& writer = world.openProgram();
    writer.addField({.value = "Dear Anna", .selection = {0, 4}});
    flutter::ViewController controller;
    const auto bridge = DesktopBridge::create({}, controller);
    for (const auto* method : {"show", "hide", "pin", "cancelQuit"})
        EXPECT_EQ(call(method).text(), "null") << method;
    EXPECT_EQ(call("growHeight", 5).text(), "null");
    EXPECT_EQ(call("localize", EncodableMap{{"tooltip", "Quillmark"}}).text(), "null");

    call("initialize");
    world.bringToFront(writer);
    world.userPresses(49, platform::kCGEventFlagMaskAlternate | platform::kCGEventFlagMaskShift);
    world.settle();
    const auto token = textOf(*flutter::asMap(calls().back().arguments), "token");
    EXPECT_EQ(call("paste", EncodableMap{{"text", "Hello"}, {"token", token}}).text(), "pasted");
}
