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
// It fetches the pasteboard's text some time after the key, before something else may be put there.
constexpr auto pauseAfterPaste = 1000ms;
// The first start of LibreOffice or a browser makes a profile.
constexpr auto mostTimeToStart = 60s;

double millisecondsOf(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

Command withFolder(Command command, const std::string& folder) {
    for (std::string& word : command)
        for (std::size_t at = 0; (at = word.find("{folder}", at)) != word.npos;)
            word.replace(at, 8, folder);
    return command;
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
        testbed::writeFile(folder_ / name, content);
    }
    const auto others = desktop.allWindows();
    process_.emplace(withFolder(command, folder));
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
}

// Some are started by a script that waits for the program, and some leave out whose their window is. The X
// server gives the number of a window that has gone to the next program's.
Trial::~Trial() {
    if (const auto program = desktop_.processOf(window_)) kill(*program, SIGTERM);
    process_.reset();
    waitUntil([&] { return std::ranges::count(desktop_.allWindows(), window_) == 0; }, 5s);
}

void Trial::select() {
    if (target_.selectsByClicks)
        for (int click = 0; click < 3; ++click)
            desktop_.click(window_);
    else
        press(target_.select);
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
    desktop_.keyboard.hold("Alt+Shift");
    std::this_thread::sleep_for(50ms);
    const auto start = Clock::now();
    desktop_.keyboard.hold("space");
    host_.awaitBytes(4s);
    const auto arguments = host_.nextCall("capture", 100ms);
    desktop_.keyboard.letGoAll();
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
                    millisecondsOf(host_.received().back().at - start)};
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
    return {reply != nullptr ? *reply : "an error", millisecondsOf(end - start)};
}

std::string Trial::textOnceItIs(const std::string& expected) {
    std::string found;
    waitUntil([&] { return (found = text()) == expected; }, 4s);
    return found;
}

std::string Trial::text() {
    const std::string nothing = "nothing was copied";
    putOnPasteboard(nothing);
    press(target_.selectAll);
    std::string copied = nothing;
    for (const std::string& key : target_.copy)
        desktop_.keyboard.press(key);
    waitUntil([&] { return (copied = desktop_.text("CLIPBOARD").value_or(nothing)) != nothing; }, 1500ms);
    if (copied == nothing) return ""; // most copy nothing from an empty field
    return withoutLineEnds(std::move(copied), target_.hasSpacedParagraphs);
}

} // namespace compat
