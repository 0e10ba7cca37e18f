#pragma once

#include "platform/window.h"

#include <cstdint>
#include <memory>
#include <string>

// The state of one of the host's windows, and what the user does to it (through the main queue, so that it
// happens at the next turn). A window has no border here: its frame is its content.
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

    // Frame changes that asked for the window to be drawn again.
    int redisplays = 0;
    bool visible = false;
    bool key = false;
    bool miniaturized = false;
    bool zoomed = false;
    bool closed = false;
    bool awoken = false;
    // The frame to come back to from full screen.
    Rect ordinaryFrame;

    void userPressesCloseButton();
    void userEntersFullScreen();
    void userExitsFullScreen();
    // Gets no smaller than `minSize`.
    void userResizes(Size size);

    // Takes a frame, which the desktop keeps under the window's autosave name.
    void place(Rect newFrame);

private:
    void atNextTurn(void (Native::*act)());
    void close();
    void enterFullScreen();
    void exitFullScreen();
};
