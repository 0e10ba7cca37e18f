// Serves the desktop channel: answers every call of the interface on it, and keeps between calls what they
// need (hot key, last capture, pending paste, menu labels). Main thread only.
//
// The main window owns the bridge; the bridge refers to the window weakly, and stored callbacks refer to the
// bridge weakly. Each operation is defined in the folder of its subject: window operations, utilities and
// menu in desktop/, capture and paste-back in capture/, the hot key in hotkey/, quitting in app/.
#pragma once

#include "capture/capture_state.h"
#include "flutter/encodable_value.h"
#include "flutter/method_channel.h"
#include "hotkey/hot_key.h"
#include "hotkey/hot_key_spec.h"
#include "platform/main_queue.h"
#include "platform/view_controller.h"
#include "platform/window.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

struct PasteTarget;

class DesktopBridge : public std::enable_shared_from_this<DesktopBridge> {
public:
    // Creates the bridge and installs the channel's handler.
    static std::shared_ptr<DesktopBridge> create(std::weak_ptr<platform::Window> window,
                                                 flutter::ViewController& controller);

    // Whether the interface has called "initialize". Only then is it asked before the host quits.
    bool initialized() const { return initialized_; }

    // Brings the host and its window to the front.
    void show();

    // Asks the interface whether to quit; quits at once when it has not called "initialize" yet.
    void requestQuit();

    // Puts the labels that the interface has sent so far on the menu.
    void refreshMenu();

    // Reads what the user is writing in the frontmost application and sends it to the interface.
    void capture();

private:
    using Arguments = const flutter::EncodableValue&;
    using Result = flutter::MethodResult;
    struct Row; // one method of the channel
    struct Captured;
    struct PasteAttempt;

    DesktopBridge(std::weak_ptr<platform::Window> window, flutter::ViewController& controller);
    void dispatch(const flutter::MethodCall& call, Result result);

    // Window operations.
    void show(Arguments arguments, Result result);
    void hide(Arguments arguments, Result result);
    void pin(Arguments arguments, Result result);
    void growHeight(Arguments arguments, Result result);
    void close();
    void growHeight(double points);

    // Host utilities.
    void initialize(Arguments arguments, Result result);
    void localize(Arguments arguments, Result result);
    void openUrl(Arguments arguments, Result result);
    void openPath(Arguments arguments, Result result);
    void excludeModelBackups(Arguments arguments, Result result);
    void requestPermission(Arguments arguments, Result result);

    // Quitting.
    void quit(Arguments arguments, Result result);
    void cancelQuit(Arguments arguments, Result result);

    // Hot key. True when the requested combination is registered afterwards.
    bool registerHotkey(std::uint32_t key, std::uint32_t modifiers);
    bool createHotkey(const HotKeySpec& spec);

    // Capture. The first two make one query each; null or absent when it fails.
    static platform::AXUIElementRef focusedWindow(pid_t pid);
    static std::optional<platform::CFRange> range(const platform::AXUIElementRef& element);
    void recordFocus(const platform::AXUIElementRef& element);
    Captured readText(bool hostIsFrontmost);
    void grantToken(const Captured& captured);
    void sendCapture(const Captured& captured);

    // Paste-back.
    void paste(Arguments arguments, Result result);
    bool canPasteBack(const std::string* token) const;
    void startPaste(std::string text, Result result);
    void poll(const std::shared_ptr<PasteAttempt>& attempt);
    static bool typeBack(const PasteAttempt& attempt);
    void giveUp(PasteAttempt& attempt);
    static bool targetUnchanged(const platform::RunningApplication& source, const PasteTarget& target);

    std::weak_ptr<platform::Window> window_;
    flutter::MethodChannel channel_;
    std::unique_ptr<HotKey> hotkey_;
    std::optional<HotKeySpec> hotkeySpec_;
    std::set<std::string> excluded_; // lower-cased identifiers of applications that are not captured from
    CaptureState captureState_;
    bool initialized_ = false;
    bool pastePending_ = false; // from a paste's start to its reply
    std::map<std::string, std::string> menuLabels_;
};
