#include "testing/soak/chores.h"

#include "flutter/standard_codec.h"

#include <csignal>
#include <cstdlib>

namespace soak {

using namespace std::chrono_literals;
using flutter::EncodableMap;

namespace {

void callSomething(World& world, Chance& chance) {
    const std::vector<std::pair<const char*, flutter::EncodableValue>> calls{
        {"show", {}},
        {"hide", {}},
        {"pin", true},
        {"growHeight", 7},
        {"requestPermission", {}},
        {"cancelQuit", {}},
        {"localize", EncodableMap{{"tooltip", chance.words(false)}, {"nativeEdit", "Bearbeiten"}}}};
    for (std::size_t left = 1 + chance.below(4); left > 0; --left) {
        const auto& [method, arguments] = chance.from(calls);
        world.note(method);
        if (const auto reply = world.call(method, arguments); reply != "null")
            world.fault(std::string(method) + " was answered " + reply);
        chance.pause(60ms);
    }
}

void callNonsense(World& world, Chance& chance) {
    auto& host = *world.host;
    const bool undecodable = chance.oneIn(2);
    const auto reply = undecodable ? world.call("\xFF") : world.call("nonsense", "of any kind");
    if (reply != "(not handled)") world.fault("nonsense was answered " + reply);
    host.startCall("show", {}, "no/such/channel");
}

// Presses a key and waits until a program has been given it. The host keeps keys back for a moment after a
// paste, and nobody goes elsewhere but by further keys or the pointer, which come after them.
void typeKey(World& world, const char* key) {
    auto& keyboard = world.desktop.keyboard;
    keyboard.hold(key);
    testbed::waitUntil([&] { return !keyboard.nothingIsHeld(); });
    keyboard.letGo(key);
    testbed::waitUntil([&] { return keyboard.nothingIsHeld(); });
}

// And waits for it: openbox brings a window to the front once it fills the screen.
void toggleFullScreen(World& world, testbed::WindowId window) {
    const auto isFull = [&] { return world.desktop.hasState(window, "_NET_WM_STATE_FULLSCREEN"); };
    const bool before = isFull();
    world.note("F11");
    typeKey(world, "F11");
    if (!testbed::waitUntil([&] { return isFull() != before; })) world.fault("F11 changes nothing");
}

void useTheKeyboardInTheWindow(World& world, Chance& chance) {
    world.call("show"); // a paste has taken it off the screen
    world.bringHostToFront();
    const std::vector<const char*> keys{"F10", "Escape", "Down", "Tab", "a"};
    const auto own = world.desktop.activeWindow();
    if (own && chance.oneIn(2)) toggleFullScreen(world, *own);
    for (std::size_t left = chance.below(6); left > 0 && world.desktop.activeWindow() == own; --left) {
        const char* key = chance.from(keys);
        world.note(key);
        typeKey(world, key);
    }
    for (int open = 0; open < 2; ++open)
        typeKey(world, "Escape");
}

// The host lets a signal's question stand for that long even when another one has been answered.
constexpr auto questionStands = 15s;

void askToQuit(World& world, Chance& chance) {
    const auto now = testbed::Clock::now();
    const auto own = world.desktop.windows(world.host->process().pid());
    if (now - world.askedToEnd > questionStands + 1s) {
        world.note("by a signal");
        world.askedToEnd = now;
        world.host->process().signal(SIGTERM);
    } else if (!own.empty()) {
        world.note("by the close button");
        world.desktop.close(own.front());
    } else {
        return;
    }
    if (!world.host->nextCall("quit")) world.fault("nobody was asked whether the host may quit");
    chance.pause(100ms);
    world.call("cancelQuit");
}

void startTheHostAgain(World& world, Chance&) {
    testbed::Process second({testbed::hostProgram(), "/bin/true"});
    if (second.exitStatus() != 0) world.fault("a second start ended otherwise: " + second.output());
}

void changeTheKeyboardLayout(World& world, Chance& chance) {
    static constexpr std::array layouts{"us", "de", "fr", "us -variant dvorak", "us,ru"};
    const std::string layout = chance.from(layouts);
    world.note(layout);
    if (std::system(("setxkbmap -layout " + layout).c_str()) != 0) world.fault("setxkbmap failed");
}

void goToAnotherWorkspace(World& world, Chance& chance) { world.desktop.goToWorkspace(chance.below(2)); }

} // namespace

std::vector<Step> choreSteps() {
    return {{"call something", 8, callSomething},
            {"call nonsense", 2, callNonsense},
            {"use the keyboard in the window", 4, useTheKeyboardInTheWindow},
            {"ask to quit", 3, askToQuit},
            {"start the host again", 2, startTheHostAgain},
            {"change the keyboard layout", 2, changeTheKeyboardLayout},
            {"go to another workspace", 2, goToAnotherWorkspace}};
}

} // namespace soak
