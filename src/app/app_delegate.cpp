#include "app/app_delegate.h"

#include "app/main_flutter_window.h"
#include "platform/main_queue.h"

using platform::Application;
using platform::ApplicationTerminateReply;

namespace {

constexpr platform::Seconds quitTimeout{15.0};

} // namespace

std::shared_ptr<DesktopBridge> AppDelegate::bridge() const {
    const auto window = std::dynamic_pointer_cast<MainFlutterWindow>(mainFlutterWindow.lock());
    return window ? window->bridge() : nullptr;
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() { return true; }

bool AppDelegate::applicationSupportsSecureRestorableState() { return true; }

ApplicationTerminateReply AppDelegate::applicationShouldTerminate() {
    if (allowQuit_) return ApplicationTerminateReply::terminateNow;
    const auto desktop = bridge();
    if (!desktop || !desktop->initialized()) return ApplicationTerminateReply::terminateNow;
    // The question already put to the interface stands.
    if (terminationPending_) return ApplicationTerminateReply::terminateLater;

    terminationPending_ = true;
    desktop->requestQuit();
    // Never cancelled: it grants whatever request is pending when it fires.
    platform::MainQueue::asyncAfter(quitTimeout, [delegate = weak_from_this()] {
        const auto alive = delegate.lock();
        if (alive && alive->terminationPending_) alive->finishQuit();
    });
    return ApplicationTerminateReply::terminateLater;
}

bool AppDelegate::applicationShouldHandleReopen(bool) {
    if (const auto desktop = bridge()) desktop->show();
    return true;
}

void AppDelegate::finishQuit() {
    allowQuit_ = true;
    if (!terminationPending_) return Application::sharedApplication().terminate();
    terminationPending_ = false;
    Application::sharedApplication().replyToApplicationShouldTerminate(true);
}

void AppDelegate::cancelQuit() {
    if (!terminationPending_) return;
    terminationPending_ = false;
    Application::sharedApplication().replyToApplicationShouldTerminate(false);
}
