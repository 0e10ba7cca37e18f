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
    // The interface has been asked and has not answered yet.
    if (terminationPending_) return ApplicationTerminateReply::terminateLater;

    terminationPending_ = true;
    desktop->requestQuit();
    // Not cancelled by an answer: it grants the request that is pending when the time is up, even a later
    // one.
    platform::MainQueue::asyncAfter(quitTimeout, weak_from_this(), [this] {
        if (terminationPending_) finishQuit();
    });
    return ApplicationTerminateReply::terminateLater;
}

void AppDelegate::applicationTerminationWithdrawn() { terminationPending_ = false; }

bool AppDelegate::applicationShouldHandleReopen(bool) {
    if (const auto desktop = bridge()) desktop->show();
    return true;
}

// Refused before "initialize", which says which programs are excluded. The capture runs in a later entry of
// the main queue, so that the caller has its answer first: a capture may take seconds.
bool AppDelegate::applicationShouldHandleCapture() {
    const auto desktop = bridge();
    if (!desktop || !desktop->initialized()) return false;
    platform::MainQueue::async(desktop, [desktop = desktop.get()] { desktop->capture(); });
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
