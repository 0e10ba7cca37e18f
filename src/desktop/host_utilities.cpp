// Services that the interface cannot perform itself: opening links and files, leaving the model out of
// backups, asking for the accessibility permission.
#include "desktop/desktop_bridge.h"
#include "flutter/arguments.h"
#include "platform/accessibility.h"
#include "platform/url.h"
#include "platform/workspace.h"
#include "text/text.h"

using platform::URL;

namespace {

bool mayOpen(const URL& url) {
    const auto scheme = text::lowercased(url.scheme().value_or(""));
    return scheme == "https" || scheme == "mailto";
}

bool openLink(const std::string* link) {
    const auto url = link ? URL::URLWithString(*link) : std::nullopt;
    return url && mayOpen(*url) && platform::Workspace::sharedWorkspace().openURL(*url);
}

bool openFile(const std::string* path) {
    return path && platform::Workspace::sharedWorkspace().openURL(URL::fileURLWithPath(*path));
}

} // namespace

void DesktopBridge::openUrl(Arguments arguments, Result result) {
    if (openLink(flutter::asString(arguments))) return result.success();
    result.error("open_url", "Could not open the link");
}

void DesktopBridge::openPath(Arguments arguments, Result result) {
    if (openFile(flutter::asString(arguments))) return result.success();
    result.error("open_path", "Could not open the file or folder");
}

void DesktopBridge::excludeModelBackups(Arguments arguments, Result result) {
    const auto* path = flutter::asString(arguments);
    if (!path) return result.error("path", "Missing model directory");
    const auto failure = URL::fileURLWithPath(*path, true).setExcludedFromBackup(true);
    if (failure) return result.error("backup", *failure);
    result.success();
}

void DesktopBridge::requestPermission(Arguments, Result result) {
    platform::AXIsProcessTrustedWithOptions({.kAXTrustedCheckOptionPrompt = true});
    result.success();
}
