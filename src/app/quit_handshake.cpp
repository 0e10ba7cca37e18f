// DesktopBridge's side of quitting: the host's question to the interface, and the interface's two answers.
#include "app/app_delegate.h"
#include "desktop/desktop_bridge.h"

using platform::Application;

namespace {

AppDelegate* appDelegate() { return dynamic_cast<AppDelegate*>(Application::sharedApplication().delegate()); }

} // namespace

void DesktopBridge::requestQuit() {
    if (initialized_) return channel_.invokeMethod("quit", flutter::EncodableMap{});
    if (auto* delegate = appDelegate()) delegate->allowQuit();
    Application::sharedApplication().terminate();
}

// Answered first, so that the interface has its answer before the program begins to end.
void DesktopBridge::quit(Arguments, Result result) {
    result.success();
    if (auto* delegate = appDelegate()) delegate->finishQuit();
}

void DesktopBridge::cancelQuit(Arguments, Result result) {
    if (auto* delegate = appDelegate()) delegate->cancelQuit();
    result.success();
}
