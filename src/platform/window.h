#pragma once

#include "platform/geometry.h"
#include "platform/screen.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace flutter {
class ViewController;
}

namespace platform {

// Bits of a window's style mask.
inline constexpr std::uint64_t WindowStyleMaskTitled = 0x1;
inline constexpr std::uint64_t WindowStyleMaskClosable = 0x2;
inline constexpr std::uint64_t WindowStyleMaskMiniaturizable = 0x4;
inline constexpr std::uint64_t WindowStyleMaskResizable = 0x8;
inline constexpr std::uint64_t WindowStyleMaskFullScreen = 0x4000;
inline constexpr std::uint64_t WindowStyleMaskFullSizeContentView = 0x8000;

enum class BackingStoreType { retained = 0, nonretained = 1, buffered = 2 };
enum class WindowTitleVisibility { visible = 0, hidden = 1 };

inline constexpr std::int64_t NormalWindowLevel = 0;
inline constexpr std::int64_t FloatingWindowLevel = 3;

inline constexpr std::uint64_t WindowCollectionBehaviorMoveToActiveSpace = 0x2;
inline constexpr std::uint64_t WindowCollectionBehaviorFullScreenAuxiliary = 0x100;

// What a window asks of its delegate and tells it, on the main thread.
class WindowDelegate {
public:
    virtual ~WindowDelegate() = default;

    // The close button: true lets the window close.
    virtual bool windowShouldClose() = 0;
    virtual void windowDidEnterFullScreen() = 0;
    virtual void windowDidExitFullScreen() = 0;
};

// One top-level window, owned by its creator; others keep a weak reference. Main thread only.
class Window {
public:
    Window(Rect contentRect, std::uint64_t styleMask, BackingStoreType backing, bool defer);
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // Called once, after the window was created from the application's main interface.
    virtual void awakeFromNib();

    void setContentViewController(std::unique_ptr<flutter::ViewController> controller);
    flutter::ViewController* contentViewController() const;

    void setContentSize(Size size);
    // The smallest size of the window's frame that the user can make.
    void setMinSize(Size size);
    void setTitle(std::string_view title);
    std::string title() const;
    void setTitleVisibility(WindowTitleVisibility visibility);
    void setTitlebarAppearsTransparent(bool transparent);
    void setStyleMask(std::uint64_t styleMask);
    // Carries `WindowStyleMaskFullScreen` while the window fills its screen.
    std::uint64_t styleMask() const;
    void setMovableByWindowBackground(bool movable);
    void center();
    // Gives the window the frame that the desktop kept under this name before, if it fits a screen; from now
    // on the desktop keeps every change of the frame.
    void setFrameAutosaveName(std::string_view name);
    void setCollectionBehavior(std::uint64_t behavior);
    void setReleasedWhenClosed(bool released);
    // Not owned; null removes it.
    void setDelegate(WindowDelegate* delegate);

    void miniaturize();
    void deminiaturize();
    void makeKeyAndOrderFront();
    // Takes the window off the screen; the program keeps running.
    void orderOut();
    void setLevel(std::int64_t level);
    bool isZoomed() const;
    Rect frame() const;
    void setFrame(Rect frame, bool display);
    // The screen that the window is on; absent while it is on none.
    std::optional<Screen> screen() const;

    class Native;
    Native& native() const;

private:
    std::unique_ptr<Native> native_;
};

} // namespace platform
