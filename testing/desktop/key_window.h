// A window that writes down the keys it gets, over a connection to the X server of its own, as a program in
// another process would have.
#pragma once

#include <string>
#include <vector>

using Display = struct _XDisplay; // Xlib's header leaves macros behind

namespace testbed {

// Both of the window's names for its kind.
void setWindowClass(::Display* display, unsigned long window, std::string name);

// Writes down every key press other than those of modifier keys: "Control+c", with the symbol in the group
// that was in effect, or of the first group that has a Latin letter there.
class KeyWindow {
public:
    // Returns once it is on the screen and has the focus; throws when it never has.
    explicit KeyWindow(const char* windowClass = "editor");
    ~KeyWindow();
    KeyWindow(const KeyWindow&) = delete;
    KeyWindow& operator=(const KeyWindow&) = delete;

    void takeFocus();
    const std::vector<std::string>& presses();
    // How often Alt went down and came up with no event of another key in between: Qt programs open a menu
    // then.
    int loneAlts();

private:
    void read();

    ::Display* display_;
    unsigned long window_;
    std::vector<std::string> presses_;
    bool onlyAltSoFar_ = false;
    int loneAlts_ = 0;
};

} // namespace testbed
