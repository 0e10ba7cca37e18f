#include "desktop/native_menu_localization.h"

namespace NativeMenuLocalization {

namespace {

void retitle(platform::MenuItem& item, const std::map<std::string, std::string>& labels, bool fullScreen) {
    if (!item.identifier()) return;
    const bool leavesFullScreen = fullScreen && *item.identifier() == "nativeFullScreen";
    const auto label = labels.find(leavesFullScreen ? "nativeExitFullScreen" : *item.identifier());
    if (label == labels.end()) return;
    item.setTitle(label->second);
    if (auto* submenu = item.submenu()) submenu->setTitle(label->second);
}

} // namespace

void apply(const std::map<std::string, std::string>& labels, platform::Menu& menu, bool fullScreen) {
    for (const auto& item : menu.itemArray()) {
        retitle(*item, labels, fullScreen);
        if (auto* submenu = item->submenu()) apply(labels, *submenu, fullScreen);
    }
}

} // namespace NativeMenuLocalization
