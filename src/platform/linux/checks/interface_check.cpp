#include "platform/linux/checks/interface_check.h"

#include "platform/linux/checks/sentence.h"
#include "platform/linux/interface/program.h"

namespace platform {

Finding checkInterface(const std::vector<std::string>& command) {
    std::string problem;
    const auto complete = findInterface(command, problem);
    if (complete.empty()) return notThere("interface", "none that can be started", problem);
    return {"interface", Finding::Grade::good, complete.front(), "", ""};
}

} // namespace platform
