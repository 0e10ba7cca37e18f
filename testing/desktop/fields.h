// The small program with text fields (gtk_fields.cpp), asked and told by lines.
#pragma once

#include "testing/desktop/driven_program.h"
#include "testing/desktop/wait.h"

#include <string>
#include <vector>

namespace testbed {

class Fields : public DrivenProgram {
public:
    // Fields such as "entry=some text" or "password"; returns once the window has the keyboard.
    Fields(Desktop& desktop, const std::vector<std::string>& fields, const std::string& title = "Fields",
           const std::map<std::string, std::string>& environment = {});

    // When the first field had this text in it, however late the answer is seen; throws when it never has.
    Clock::time_point awaitText(const std::string& text);
    // What the program says its fields hold.
    std::string dump() { return command("dump"); }
};

} // namespace testbed
