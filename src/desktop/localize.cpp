// "localize": the interface's labels for the menu and the window's title.
#include "desktop/desktop_bridge.h"
#include "desktop/native_menu_localization.h"
#include "flutter/arguments.h"
#include "platform/application.h"

void DesktopBridge::localize(Arguments arguments, Result result) {
    if (const auto labels = flutter::asStringMap(arguments)) {
        const auto window = window_.lock();
        for (const auto& [key, label] : *labels) {
            menuLabels_[key] = label;
            if (window && key == "tooltip") window->setTitle(label);
        }
    }
    refreshMenu();
    result.success();
}

void DesktopBridge::refreshMenu() {
    auto* menu = platform::Application::sharedApplication().mainMenu();
    if (!menu) return;
    const auto window = window_.lock();
    const bool fullScreen = window && window->styleMask() & platform::WindowStyleMaskFullScreen;
    NativeMenuLocalization::apply(menuLabels_, *menu, fullScreen);
}
