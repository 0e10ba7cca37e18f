#include "testing/compat/trial.h"

#include "flutter/arguments.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <thread>

namespace compat {

using namespace std::chrono_literals;
using flutter::EncodableMap;
using testbed::Clock;
using testbed::waitUntil;

namespace {

// Programs do not say when they have read their keys, or drawn their first window; a person takes longer.
constexpr auto pauseForProgram = 300ms;
constexpr auto pauseAfterStart = 1000ms;
constexpr auto pauseForSelection = 1000ms;
constexpr auto pauseAfterPaste = 1000ms;
constexpr auto pauseAfterCopy = 1500ms;
// The first start of LibreOffice or a browser makes a profile.
constexpr auto mostTimeToStart = 60s;

double millisecondsOf(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

std::string withFolder(std::string text, const std::string& folder) {
    for (std::size_t at = 0; (at = text.find("{folder}", at)) != text.npos;)
        text.replace(at, 8, folder);
    return text;
}

// Line ends and trailing empty lines are the program's own affair.
std::string withoutLineEnds(std::string text, bool hasSpacedParagraphs) {
    std::erase(text, '\r');
    while (text.ends_with('\n'))
        text.pop_back();
    for (std::size_t at = 0; hasSpacedParagraphs && (at = text.find("\n\n", at)) != text.npos;)
        text.erase(at, 1);
    return text;
}

} // namespace

Trial::Trial(testbed::Desktop& desktop, testbed::Host& host, const Target& target, const Command& command)
    : desktop_(desktop), host_(host), target_(target) {
    const std::string folder = folder_ / "";
    for (const auto& [name, content] : target.files) {
        std::filesystem::create_directories((folder_ / name).parent_path());
        testbed::writeFile(folder_ / name, withFolder(content, folder));
    }
    const auto others = desktop.allWindows();
    Command words;
    for (const std::string& word : command)
        words.push_back(withFolder(word, folder));
    process_.emplace(words);
    const bool isUp = waitUntil(
        [&] {
            for (const testbed::WindowId window : desktop.allWindows())
                if (std::ranges::find(others, window) == others.end() &&
                    desktop.title(window).find(target.title) != std::string::npos)
                    window_ = window;
            return window_ != 0;
        },
        mostTimeToStart);
    if (!isUp) throw std::runtime_error("its window does not come up; it printed: " + process_->output());
    std::this_thread::sleep_for(pauseAfterStart);
    if (!desktop.activate(window_)) throw std::runtime_error("its window does not come to the front");
    press(target.ready);
    press(target.fill);
}

// Both processes are ended: some programs are started by a script that waits for them, and some do not say
// which process their window belongs to. The window must be gone, since the X server gives its number to a
// later one.
Trial::~Trial() {
    if (const auto program = desktop_.processOf(window_)) kill(*program, SIGTERM);
    process_.reset();
    waitUntil([&] { return std::ranges::count(desktop_.allWindows(), window_) == 0; }, 5s);
}

void Trial::select() {
    if (target_.clicksAt > 0)
        for (int number = 0; number < 3; ++number)
            desktop_.click(window_, target_.clicksAt);
    else
        press(target_.select);
    // Most programs tell on PRIMARY what is selected. A busy one may take long, or lose keys that came before
    // it was ready (gnome-text-editor 43); Firefox 153 puts the address back once the page has loaded.
    const auto isSelected = [&] {
        const auto primary = desktop_.text("PRIMARY");
        return primary && withoutLineEnds(*primary, target_.hasSpacedParagraphs) == target_.selected;
    };
    if (waitUntil(isSelected, pauseForSelection) || target_.clicksAt > 0) return;
    press(target_.fill);
    press(target_.select);
    if (!waitUntil(isSelected, pauseForSelection) && !target_.fill.empty())
        throw std::runtime_error("its field does not take the text that is typed");
}

void Trial::click() {
    desktop_.click(window_, target_.clicksAt);
    std::this_thread::sleep_for(pauseForProgram);
}

testbed::WindowId Trial::openAnother() {
    press(target_.newWindow);
    const auto isUp = [&] {
        const auto active = desktop_.activeWindow();
        return active && active != window_ && desktop_.title(*active) != "";
    };
    if (!waitUntil(isUp, 30s)) throw std::runtime_error("its second window does not come up");
    std::this_thread::sleep_for(pauseAfterStart);
    return desktop_.activeWindow().value_or(0);
}

void Trial::bringToFront(testbed::WindowId window) {
    if (!desktop_.activate(window)) throw std::runtime_error("a window of it does not come to the front");
    std::this_thread::sleep_for(pauseForProgram);
}

void Trial::press(const Keys& keys) {
    for (const std::string& key : keys)
        if (key.empty())
            std::this_thread::sleep_for(pauseForProgram);
        else
            desktop_.keyboard.press(key);
    std::this_thread::sleep_for(pauseForProgram);
}

void Trial::putOnPasteboard(const std::string& text) { host_.call("paste", EncodableMap{{"text", text}}); }

std::optional<Captured> Trial::capture() {
    while (host_.nextCall("capture", 0ms)) // a busy host sent it after the last look
        continue;
    desktop_.keyboard.hold("Alt+Shift");
    std::this_thread::sleep_for(50ms);
    const auto start = Clock::now();
    desktop_.keyboard.hold("space");
    host_.awaitBytes(4s);
    auto arguments = host_.nextCall("capture", 100ms);
    desktop_.keyboard.letGoAll();
    if (!arguments) {
        host_.call("none"); // is answered after a capture under way
        arguments = host_.nextCall("capture", 100ms);
    }
    if (!arguments) return std::nullopt;
    const auto part = [&](const char* key) {
        const auto* text = flutter::asString(flutter::member(flutter::asMap(*arguments), key));
        return text != nullptr ? *text : std::string();
    };
    return Captured{withoutLineEnds(part("text"), target_.hasSpacedParagraphs),
                    part("source"),
                    part("token"),
                    part("app_name"),
                    part("title"),
                    millisecondsOf(host_.received().back().at - start),
                    flutter::member(flutter::asMap(*arguments), "truncated") ==
                        flutter::EncodableValue(true)};
}

Pasted Trial::paste(const std::string& text, const std::string& token) {
    host_.call("show");
    waitUntil([&] { return desktop_.activeWindow() != window_; });
    const auto start = Clock::now();
    const auto outcome = host_.call("paste", EncodableMap{{"text", text}, {"token", token}});
    const auto end = host_.received().back().at;
    const auto* value = std::get_if<flutter::EncodableValue>(&outcome);
    const auto* reply = value != nullptr ? flutter::asString(*value) : nullptr;
    // The host's window comes back where nothing was pasted.
    if (reply == nullptr || *reply != "pasted")
        waitUntil([&] { return desktop_.activeWindow() != window_; }, 2s);
    desktop_.activate(window_);
    std::this_thread::sleep_for(pauseAfterPaste);
    mayFetch_ = reply != nullptr && *reply == "pasted";
    return {reply != nullptr ? *reply : "an error", millisecondsOf(end - start)};
}

void Trial::pasteByHand(const std::string& text) {
    putOnPasteboard(text);
    press({"Control+v"});
    std::this_thread::sleep_for(pauseAfterPaste);
    mayFetch_ = true;
}

std::string Trial::textOnceItIs(const std::string& expected) {
    std::string found;
    waitUntil([&] { return (found = text()) == expected; }, 4s);
    return found;
}

std::string Trial::text() {
    // A busy program fetches what it pastes late, and anything else that is there by then instead.
    if (!mayFetch_) putOnPasteboard("nothing was copied");
    const auto owner = desktop_.owner("CLIPBOARD");
    press(target_.selectAll);
    for (const std::string& key : target_.copy)
        desktop_.keyboard.press(key);
    // Most copy nothing from an empty field.
    if (!waitUntil([&] { return desktop_.owner("CLIPBOARD") != owner; }, pauseAfterCopy)) return "";
    mayFetch_ = false;
    return withoutLineEnds(desktop_.text("CLIPBOARD").value_or(""), target_.hasSpacedParagraphs);
}

} // namespace compat
