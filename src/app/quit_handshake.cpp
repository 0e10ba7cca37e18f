// Quitting, on the desktop channel: the host's question to the interface, and the interface's two answers.
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

// The call is answered first, so that the interface gets the reply before the program ends.
void DesktopBridge::quit(Arguments, Result result) {
    result.success();
    if (auto* delegate = appDelegate()) delegate->finishQuit();
}

void DesktopBridge::cancelQuit(Arguments, Result result) {
    if (auto* delegate = appDelegate()) delegate->cancelQuit();
    result.success();
}
