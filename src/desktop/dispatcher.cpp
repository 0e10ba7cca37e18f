// The desktop channel's method table: which call runs which operation. Every call is answered exactly once.
#include "desktop/desktop_bridge.h"

#include <algorithm>
#include <array>
#include <string_view>

struct DesktopBridge::Row {
    std::string_view method;
    void (DesktopBridge::*operation)(Arguments, Result);
};

std::shared_ptr<DesktopBridge> DesktopBridge::create(std::weak_ptr<platform::Window> window,
                                                     flutter::ViewController& controller) {
    std::shared_ptr<DesktopBridge> bridge{new DesktopBridge(std::move(window), controller)};
    bridge->channel_.setMethodCallHandler(
        [weak = std::weak_ptr{bridge}](const flutter::MethodCall& call, Result result) {
            if (const auto alive = weak.lock()) alive->dispatch(call, std::move(result));
        });
    return bridge;
}

DesktopBridge::DesktopBridge(std::weak_ptr<platform::Window> window, flutter::ViewController& controller)
    : window_(std::move(window)), channel_(controller.binaryMessenger(), "quillmark.quillmark/desktop") {}

void DesktopBridge::dispatch(const flutter::MethodCall& call, Result result) {
    static constexpr std::array table{
        Row{"excludeModelBackups", &DesktopBridge::excludeModelBackups},
        Row{"initialize", &DesktopBridge::initialize},
        Row{"show", &DesktopBridge::show},
        Row{"hide", &DesktopBridge::hide},
        Row{"pin", &DesktopBridge::pin},
        Row{"growHeight", &DesktopBridge::growHeight},
        Row{"quit", &DesktopBridge::quit},
        Row{"cancelQuit", &DesktopBridge::cancelQuit},
        Row{"openPath", &DesktopBridge::openPath},
        Row{"openUrl", &DesktopBridge::openUrl},
        Row{"requestPermission", &DesktopBridge::requestPermission},
        Row{"localize", &DesktopBridge::localize},
        Row{"paste", &DesktopBridge::paste},
    };
    const auto row = std::ranges::find(table, call.method, &Row::method);
    if (row == table.end()) return result.notImplemented();
    (this->*row->operation)(call.arguments, std::move(result));
}
