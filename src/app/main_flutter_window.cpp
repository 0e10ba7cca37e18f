#include "app/main_flutter_window.h"

#include "flutter/binary_messenger.h"
#include "platform/view_controller.h"

MainFlutterWindow::MainFlutterWindow(platform::Rect contentRect, std::uint64_t styleMask,
                                     platform::BackingStoreType backing, bool defer)
    : Window(contentRect, styleMask, backing, defer) {}

MainFlutterWindow::~MainFlutterWindow() = default;

void MainFlutterWindow::awakeFromNib() {
    setContentViewController(std::make_unique<flutter::ViewController>());
    configure();
    bridge_ = DesktopBridge::create(weak_from_this(), *contentViewController());
    systemModel_ = SystemModelBridge::create(contentViewController()->binaryMessenger());
    setDelegate(this);
    Window::awakeFromNib();
}

void MainFlutterWindow::configure() {
    setContentSize({1040, 650});
    setMinSize({540, 500});
    setTitle("글빛나래 · Quillmark");
    setTitleVisibility(platform::WindowTitleVisibility::hidden);
    setTitlebarAppearsTransparent(true);
    setStyleMask(styleMask() | platform::WindowStyleMaskFullSizeContentView);
    setMovableByWindowBackground(true);
    center();
    setFrameAutosaveName("QuillmarkFlutterMain");
    setCollectionBehavior(platform::WindowCollectionBehaviorMoveToActiveSpace |
                          platform::WindowCollectionBehaviorFullScreenAuxiliary);
    setReleasedWhenClosed(false);
}

bool MainFlutterWindow::windowShouldClose() {
    bridge_->requestQuit();
    return false;
}

void MainFlutterWindow::windowDidEnterFullScreen() { bridge_->refreshMenu(); }

void MainFlutterWindow::windowDidExitFullScreen() { bridge_->refreshMenu(); }
