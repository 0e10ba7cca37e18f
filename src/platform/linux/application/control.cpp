#include "platform/linux/application/control.h"

#include "platform/application.h"
#include "platform/linux/checks/host_report.h"
#include "platform/linux/interface/program.h"
#include "platform/linux/window/main_window.h"
#include "platform/linux/window/native_window.h"
#include "platform/linux/x11/keyboard/combination_name.h"
#include "platform/linux/x11/keyboard/hot_keys.h"
#include "platform/main_queue.h"

#include <gdk/gdk.h>
#include <unistd.h>

namespace platform {
namespace {

using Outcome = InstanceAnswer::Outcome;

std::string thisProcess() { return "it runs already (process " + std::to_string(getpid()) + ")"; }

void bringUpWindow() {
    const auto window = mainWindow();
    auto* delegate = Application::sharedApplication().delegate();
    if (delegate != nullptr) delegate->applicationShouldHandleReopen(window && window->native().isVisible());
}

// Whoever starts the program again wants to use it: that ends a pause.
InstanceAnswer show(const InstanceCaller& caller) {
    x11::HotKeys::shared().setPaused(false);
    MainQueue::async(bringUpWindow);
    const std::string line = thisProcess() + ", and its window was brought to the front";
    if (caller.command.empty() || caller.command == interfaceCommand()) return {Outcome::done, line + "."};
    return {Outcome::differs, line + "; it serves the interface " + interfaceCommand().front() +
                                  ", so quit it first to start " + caller.command.front() + "."};
}

InstanceAnswer capture() {
    auto* delegate = Application::sharedApplication().delegate();
    if (delegate != nullptr && delegate->applicationShouldHandleCapture()) return {};
    return {Outcome::refused, "the interface is not ready for a capture yet; try again once it has started."};
}

InstanceAnswer pause() {
    auto& hotKeys = x11::HotKeys::shared();
    if (!hotKeys.isPaused()) {
        hotKeys.setPaused(true);
        return {Outcome::done, "the hot key is paused; --pause once more takes it again."};
    }
    if (hotKeys.setPaused(false)) return {Outcome::done, "the hot key works again."};
    return {Outcome::refused, "another program has taken the hot key meanwhile; end that program and use "
                              "--pause again, or choose another hot key."};
}

InstanceAnswer hide() {
    if (const auto window = mainWindow()) window->miniaturize();
    return {};
}

InstanceAnswer quit() {
    MainQueue::async([] { Application::sharedApplication().terminate(); });
    return {};
}

HostReport hostReport() {
    HostReport report;
    report.process = getpid();
    report.interface = interfaceCommand().front();
    const auto& hotKeys = x11::HotKeys::shared();
    if (const auto known = hotKeys.known()) {
        using HotKeyState = HostReport::HotKeyState;
        report.combination = x11::combinationName(known->key, known->modifiers);
        report.hotKey = !known->isRegistered ? HotKeyState::refused
                        : hotKeys.isPaused() ? HotKeyState::paused
                                             : HotKeyState::held;
    }
    return report;
}

InstanceAnswer carryOut(InstanceRequest request, const InstanceCaller& caller) {
    switch (request) {
    case InstanceRequest::show:
        return show(caller);
    case InstanceRequest::greet:
        return {Outcome::done, thisProcess() + "."};
    case InstanceRequest::hide:
        return hide();
    case InstanceRequest::capture:
        return capture();
    case InstanceRequest::pause:
        return pause();
    case InstanceRequest::quit:
        return quit();
    case InstanceRequest::report:
        return {Outcome::done, encode(hostReport())};
    }
    return {};
}

} // namespace

void handleRequest(InstanceRequest request, const InstanceCaller& caller, const InstanceReply& reply) {
    MainQueue::async([=] {
        if (!caller.startupId.empty()) gdk_notify_startup_complete_with_id(caller.startupId.c_str());
        reply(carryOut(request, caller));
    });
}

} // namespace platform
