// The program whose elements stand in a script (at_spi_program.cpp), told by lines.
#pragma once

#include "testing/desktop/driven_program.h"

#include <string>
#include <vector>

namespace testbed {

class ScriptedElements : public DrivenProgram {
public:
    // Returns once the window has the keyboard, or at once with the option "title=none".
    ScriptedElements(Desktop& desktop, const std::vector<std::string>& options, const std::string& script);

    // How often a method was called so far.
    int calls(const std::string& method) { return std::stoi(command("calls " + method)); }
};

} // namespace testbed
