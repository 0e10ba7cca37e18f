#include "platform/running_application.h"

#include "platform/linux/programs/process.h"
#include "platform/linux/x11/windows/activation.h"
#include "platform/linux/x11/windows/stacking.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace platform {
namespace {

// The window that the program was found by if it still exists, else the program's topmost one; 0 for none.
x11::WindowId windowToShow(const RunningApplication::Process& process) {
    const auto windows = x11::stackedWindows();
    if (std::ranges::find(windows, process.window()) != windows.end()) return process.window();
    return x11::topmostWindow(process.id());
}

} // namespace

RunningApplication::RunningApplication(std::shared_ptr<const Process> process)
    : process_(std::move(process)) {}

RunningApplication RunningApplication::currentApplication() {
    static const auto process = std::make_shared<const Process>(::getpid(), 0);
    return RunningApplication(process);
}

pid_t RunningApplication::processIdentifier() const { return process_->id(); }

std::optional<std::string> RunningApplication::bundleIdentifier() const { return process_->identity(); }

std::optional<std::string> RunningApplication::localizedName() const { return process_->name(); }

bool RunningApplication::isTerminated() const { return process_->isTerminated(); }

bool RunningApplication::activateFromApplication(const RunningApplication&) const {
    return !process_->isTerminated() && x11::activateWindow(windowToShow(*process_));
}

bool RunningApplication::operator==(const RunningApplication& other) const {
    return process_->isSameAs(*other.process_);
}

} // namespace platform
