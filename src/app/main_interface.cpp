#include "app/main_interface.h"

#include "app/app_delegate.h"
#include "app/main_flutter_window.h"
#include "app/main_menu.h"

platform::MainInterface loadMainInterface() {
    constexpr platform::Rect contentRect{0, 0, 800, 600}; // until awakeFromNib() sets the window's own size
    constexpr auto styleMask = platform::WindowStyleMaskTitled | platform::WindowStyleMaskClosable |
                               platform::WindowStyleMaskMiniaturizable | platform::WindowStyleMaskResizable;
    auto window = std::make_shared<MainFlutterWindow>(contentRect, styleMask,
                                                      platform::BackingStoreType::buffered, false);
    auto delegate = std::make_shared<AppDelegate>();
    delegate->mainFlutterWindow = window;
    return {delegate, makeMainMenu(), window};
}
