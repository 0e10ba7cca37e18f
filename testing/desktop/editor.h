// A real text editor (mousepad) with one file open.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/process.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace testbed {

class Editor {
public:
    // Opens a new file with that text and waits until the editor has the keyboard.
    Editor(Desktop& desktop, const std::filesystem::path& file, std::string_view text);

    pid_t pid() const { return process_.pid(); }
    Process& process() { return process_; }
    WindowId window() const { return window_; }
    bool bringToFront() { return desktop_.activate(window_); }

    // Selects whole lines with the keyboard, counted from 0. True once the editor says they are selected.
    bool selectLines(int first, int count);

    // Saves with Control+S until the file holds something other than `before`, and returns that: what was
    // typed or pasted just now may take the editor a moment.
    std::string savedText(std::string_view before);

private:
    Desktop& desktop_;
    std::filesystem::path file_;
    std::string text_;
    Process process_;
    WindowId window_ = 0;
};

} // namespace testbed
