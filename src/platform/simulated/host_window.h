#pragma once

#include "platform/window.h"

#include <cstdint>
#include <memory>
#include <string>

// The state of one of the host's windows, and what the user does to it, which takes effect at the next turn
// of the main loop. Windows have no border here: the frame and the content have the same size.
class platform::Window::Native {
public:
    explicit Native(Window& owner) : window(owner) {}

    Window& window;
    std::unique_ptr<flutter::ViewController> contentViewController;
    WindowDelegate* delegate = nullptr;

    Rect frame;
    Size minSize;
    std::string title;
    std::uint64_t styleMask = 0;
    BackingStoreType backing = BackingStoreType::buffered;
    bool defer = false;
    WindowTitleVisibility titleVisibility = WindowTitleVisibility::visible;
    bool titlebarAppearsTransparent = false;
    bool movableByWindowBackground = false;
    std::string frameAutosaveName;
    std::uint64_t collectionBehavior = 0;
    bool releasedWhenClosed = true;
    std::int64_t level = NormalWindowLevel;

    // How many frame changes asked for the window to be drawn again.
    int redisplays = 0;
    bool visible = false;
    bool key = false;
    bool miniaturized = false;
    bool zoomed = false;
    bool closed = false;
    bool awoken = false;
    Rect frameBeforeFullScreen;

    void userPressesCloseButton();
    void userEntersFullScreen();
    void userExitsFullScreen();

    // Gives the window a frame, which the desktop keeps under the window's autosave name.
    void place(Rect newFrame);

private:
    void atNextTurn(void (Native::*act)());
    void close();
    void enterFullScreen();
    void exitFullScreen();
};
