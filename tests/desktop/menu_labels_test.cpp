// The interface's labels on the native menu.
#include "desktop/native_menu_localization.h"
#include "support/host.h"

#include <gmock/gmock.h>

using flutter::EncodableMap;
using platform::Menu;
using platform::MenuItem;

namespace {

MenuItem& addTo(Menu& menu, std::string title, std::optional<std::string> identifier) {
    return menu.addItem(std::make_unique<MenuItem>(std::move(title), std::move(identifier)));
}

Menu& submenuOf(MenuItem& item) {
    item.setSubmenu(std::make_unique<Menu>(item.title()));
    return *item.submenu();
}

struct MenuLabels : testing::Test, Host {
    MenuItem *view, *toggle, *deep, *nameless;

    MenuLabels() {
        auto bar = std::make_unique<Menu>("Main");
        view = &addTo(*bar, "View", "view");
        toggle = &addTo(submenuOf(*view), "Enter Full Screen", "nativeFullScreen");
        nameless = &addTo(*view->submenu(), "More", std::nullopt);
        deep = &addTo(submenuOf(*nameless), "Deep", "deep");
        platform::Application::sharedApplication().setMainMenu(std::move(bar));
    }
};

} // namespace

TEST_F(MenuLabels, AreMergedAndReachEveryDepth) {
    call("localize", EncodableMap{{"view", "보기"}, {"deep", "عميق"}, {"More", "not by title"}});
    EXPECT_EQ(view->title(), "보기");
    EXPECT_EQ(view->submenu()->title(), "보기");
    EXPECT_EQ(deep->title(), "عميق");
    EXPECT_EQ(nameless->title(), "More");

    call("localize", EncodableMap{{"view", "View 👀"}});
    call("localize", EncodableMap{{"view", "ignored"}, {"deep", 3}});
    EXPECT_EQ(view->title(), "View 👀") << "a map with one wrong member counts as empty";
    EXPECT_EQ(deep->title(), "عميق");
}

TEST_F(MenuLabels, FollowTheFullScreenState) {
    call("localize", EncodableMap{{"nativeFullScreen", "Enter"}});
    window->native().userEntersFullScreen();
    world.settle();
    EXPECT_EQ(toggle->title(), "Enter") << "without a label for full screen the title stays";
    call("localize", EncodableMap{{"nativeExitFullScreen", "Leave"}, {"view", "View"}});
    EXPECT_EQ(toggle->title(), "Leave");
    EXPECT_EQ(view->title(), "View");
    window->native().userExitsFullScreen();
    world.settle();
    EXPECT_EQ(toggle->title(), "Enter");
    EXPECT_TRUE(calledMethods().empty()) << "the interface hears nothing of full screen";
}

TEST_F(MenuLabels, TitleTheWindowWithTheTooltip) {
    EXPECT_EQ(window->title(), "글빛나래 · Quillmark");
    call("localize", EncodableMap{{"tooltip", "Quillmark"}});
    call("localize", EncodableMap{{"view", "View"}});
    EXPECT_EQ(window->title(), "Quillmark");
    platform::Application::sharedApplication().setMainMenu(nullptr);
    EXPECT_EQ(call("localize", EncodableMap{{"tooltip", "Again"}}).text(), "null");
}
