// The small program with text fields (gtk_fields.cpp), asked and told by lines.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/process.h"
#include "testing/desktop/wait.h"

#include <string>
#include <vector>

namespace testbed {

class Fields {
public:
    // Fields such as "entry=some text" or "password"; returns once the window has the keyboard, and the
    // window manager knows it: xfwm4 says so a moment after the program does.
    Fields(Desktop& desktop, const std::vector<std::string>& fields, const std::string& title = "Fields");

    Process& process() { return process_; }
    const Process& process() const { return process_; }

    // Sends one command and returns the program's answer to it.
    std::string command(const std::string& line);
    // When the first field had this text in it, however late the answer is seen; throws when it never has.
    Clock::time_point awaitText(const std::string& text);
    // What the program says its fields hold.
    std::string dump() { return command("dump"); }

private:
    std::string nextLine();

    Process process_;
    std::size_t read_ = 0;
};

} // namespace testbed
