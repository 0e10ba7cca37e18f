// A desktop with programs, somebody who works in them, and the host.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"
#include "testing/desktop/process.h"
#include "testing/desktop/temporary_folder.h"
#include "testing/model_server/scripted_server.h"
#include "testing/soak/copied.h"
#include "testing/soak/terminal.h"
#include "testing/soak/tracked_program.h"

#include <memory>
#include <string>
#include <vector>

namespace soak {

class World {
public:
    explicit World(Chance& chance);

    testbed::Desktop desktop;
    ScriptedServer model;
    std::vector<std::unique_ptr<TrackedProgram>> programs;
    Terminal terminal{desktop};
    Copied copied;
    std::unique_ptr<testbed::Host> host;
    std::unique_ptr<testbed::Process> windowManager; // null: the one that the desktop came with

    void startHost();
    testbed::Clock::time_point askedToEnd; // by a signal, the latest time
    void bringHostToFront();
    // What the host answers to a call on the desktop channel: a string, the error's code, or "null".
    std::string call(std::string_view method, const flutter::EncodableValue& arguments = {});
    std::string answer(std::uint32_t call);

    // What happens in this step, for whoever looks for the cause of a fault.
    void note(const std::string& line) { notes.push_back(line); }
    void fault(const std::string& line) { faults.push_back(line); }
    std::vector<std::string> notes, faults;

    // Everything that must be true after each step.
    void check();

private:
    std::string said_; // by this host so far
};

} // namespace soak
