#pragma once

#include "platform/application.h"
#include "platform/linux/application/command_line.h"
#include "platform/linux/base/main_loop.h"
#include "platform/linux/x11/instance/sole_instance.h"

#include <functional>
#include <memory>
#include <string>

namespace platform {

// The host's life from the main interface's making to its end, on a desktop that is ready for it. Afterwards
// another host may start. `program` is the path of the host's own binary.
MainLoopEnd runHost(const std::function<MainInterface()>& load, std::unique_ptr<SoleInstance> instance,
                    const CommandLine& line, const std::string& program);

} // namespace platform
