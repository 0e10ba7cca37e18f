// The desktop that $DISPLAY names, as the person in front of it uses and sees it.
#pragma once

#include "testing/desktop/keyboard.h"
#include "testing/desktop/wait.h"

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace testbed {

using WindowId = unsigned long;

class Desktop {
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    Keyboard keyboard;
    // Presses the left button in the middle of a window.
    void click(WindowId window, double height = 0.5);

    // Windows with a frame, of one program or of all; oldest first.
    std::vector<WindowId> windows(pid_t pid);
    std::vector<WindowId> allWindows();
    // The program that a window says it belongs to; absent when the window is gone.
    std::optional<pid_t> processOf(WindowId window);
    std::optional<WindowId> activeWindow();
    std::string title(WindowId window);
    // The name by which the desktop finds its desktop file (of WM_CLASS, the first one).
    std::string className(WindowId window);
    bool hasIcon(WindowId window);
    bool isHidden(WindowId window); // iconified or off the screen
    // By the window manager's word: "_NET_WM_STATE_ABOVE".
    bool hasState(WindowId window, const char* state);
    // On the screen, from its upper left corner, with whatever shadow or border the window draws itself.
    struct Area {
        int x = 0, y = 0, width = 0, height = 0;
    };
    Area place(WindowId window);
    // The smallest size that the window manager lets the person give it: width and height.
    std::pair<int, int> smallestSize(WindowId window);
    // Where a menu stands open (of several, any of them); absent when none does.
    std::optional<Area> openMenu();
    // The workspace the person sees, or the one a window is on; they count from 0.
    std::optional<unsigned long> workspace();
    std::optional<unsigned long> workspace(WindowId window);
    // Waits until it is the one the person sees; false when it does not exist.
    bool goToWorkspace(unsigned long number);
    // The window by which the window manager is known; absent when none runs.
    std::optional<WindowId> windowManager();
    // Waits until it has done what anybody has asked of it so far, as a person does by looking.
    void awaitWindowManager();
    // Brings a window to the front as a task bar does, once whatever was on its way there is seen, and waits
    // until it has the keyboard.
    bool activate(WindowId window);
    // The same with the program's first window, once it has one.
    bool bringToFront(pid_t program);

    // Asks the window manager to make it that large, and waits until it is.
    bool resize(WindowId window, int width, int height);

    // Presses the window's close button.
    void close(WindowId window);

    // The pasteboard's text ("CLIPBOARD"), or the text selected right now ("PRIMARY");
    // absent when there is none.
    std::optional<std::string> text(const char* selection);
    // The window that offers it; 0: none.
    WindowId owner(const char* selection);

    // The whole screen, or a part of it, as a PNG file.
    void screenshot(const std::filesystem::path& file);
    void screenshot(const std::filesystem::path& file, const Area& part);
    // Whether that part of the screen shows one color only, as before a program has painted there.
    bool isPlain(const Area& part);

private:
    class Server;
    std::unique_ptr<Server> server_;
};

} // namespace testbed
