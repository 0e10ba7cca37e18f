#include "platform/linux/checks/checks.h"

#include "platform/linux/checks/accessibility_check.h"
#include "platform/linux/checks/clipboard_manager_check.h"
#include "platform/linux/checks/display_server_check.h"
#include "platform/linux/checks/files_check.h"
#include "platform/linux/checks/hot_key_check.h"
#include "platform/linux/checks/interface_check.h"
#include "platform/linux/checks/language_model_check.h"
#include "platform/linux/checks/running_host_check.h"
#include "platform/linux/checks/window_manager_check.h"

namespace platform {
namespace {

Finding notSeen(const char* name) {
    return {name, Finding::Grade::missing, "not looked at", "This needs a display.", ""};
}

} // namespace

std::vector<Finding> checkDesktop(const std::vector<std::string>& interface) {
    std::vector<Finding> findings{checkDisplayServer()};
    const bool hasDisplay = findings.front().grade != Finding::Grade::missing;
    const auto running = hasDisplay ? checkRunningHost() : RunningHostCheck{notSeen("host"), std::nullopt};
    findings.push_back(running.finding);
    findings.push_back(hasDisplay ? checkWindowManager() : notSeen("window-manager"));
    findings.push_back(checkSessionBus());
    findings.push_back(checkAccessibility());
    findings.push_back(hasDisplay ? checkHotKey(running.host) : notSeen("hot-key"));
    findings.push_back(hasDisplay ? checkClipboardManager() : notSeen("clipboard-manager"));
    findings.push_back(checkLanguageModel());
    findings.push_back(checkInterface(interface));
    findings.push_back(checkFiles());
    return findings;
}

} // namespace platform
