// The host's only window. It shows the interface, owns the two bridges that serve the interface's channels,
// and is its own delegate: the close button only asks to quit, and full-screen changes relabel the menu. Main
// thread only.
#pragma once

#include "desktop/desktop_bridge.h"
#include "model/system_model_bridge.h"
#include "platform/window.h"

#include <memory>

class MainFlutterWindow : public platform::Window,
                          public platform::WindowDelegate,
                          public std::enable_shared_from_this<MainFlutterWindow> {
public:
    MainFlutterWindow(platform::Rect contentRect, std::uint64_t styleMask, platform::BackingStoreType backing,
                      bool defer);
    ~MainFlutterWindow() override;

    // Gives the window its content and its fixed look, and creates the bridges.
    void awakeFromNib() override;

    bool windowShouldClose() override;
    void windowDidEnterFullScreen() override;
    void windowDidExitFullScreen() override;

    // Null before awakeFromNib().
    const std::shared_ptr<DesktopBridge>& bridge() const { return bridge_; }

private:
    void configure();

    std::shared_ptr<DesktopBridge> bridge_;
    std::shared_ptr<SystemModelBridge> systemModel_;
};
