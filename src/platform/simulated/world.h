#pragma once

#include "platform/application.h"
#include "platform/event.h"
#include "platform/geometry.h"
#include "platform/simulated/clock.h"
#include "platform/simulated/host_window.h"
#include "platform/simulated/hot_keys.h"
#include "platform/simulated/interface.h"
#include "platform/simulated/journal.h"
#include "platform/simulated/keyboard.h"
#include "platform/simulated/language_model.h"
#include "platform/simulated/operating_system.h"
#include "platform/simulated/pasteboard_state.h"
#include "platform/simulated/program.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// A desktop in memory. A test makes one world, which everything the seam declares then acts on; a new world
// starts afresh. Tests set its state, let the host act, let time pass, and read its state. Main thread only.
//
//     simulated::World world;
//     auto& writer = world.openProgram({.name = "Writer"});
//     auto& letter = writer.addField({.value = "Dear Anna", .selection = {5, 4}});
//     world.bringToFront(writer);
//     world.after(70ms, [&] { world.end(writer); });
//     ...
//     world.runFor(1s);
namespace simulated {

class World {
public:
    World();
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // The living world. Without one the program ends with a line that says so.
    static World& current();
    // Null when there is none.
    static World* living();

    // ---- Time: none passes unless something waits or the test lets it ----

    // Since the world began.
    std::chrono::microseconds time() const;
    // The world does something at that time, also while the host is blocked in a wait.
    void after(Seconds delay, std::function<void()> happening);
    // Runs the main loop on what is due now; no time passes by itself.
    void settle();
    // Runs the main loop for that long.
    void runFor(Seconds duration);
    // Runs the main loop until nothing is left to do, ever, or the host has ended.
    void run();
    // Runs the main loop until the condition holds; false when it does not within that time.
    bool runUntil(const std::function<bool()>& condition, Seconds within = Seconds{60});
    Clock clock;

    // ---- Programs ----

    // Starts a program, with a process identifier of its own unless one is given. It is not in front yet.
    struct Description {
        std::string name = "Writer";
        std::optional<std::string> bundleIdentifier = "org.example.Writer";
        pid_t pid = 0;
    };
    Program& openProgram() { return openProgram(Description{}); }
    Program& openProgram(Description description);
    void end(Program& program);
    void bringToFront(Program& program);
    // Asks the program to come to the front by itself.
    void activate(Program& program);
    void bringHostToFront() { bringToFront(*host); }
    // No program has the user's attention.
    void bringNothingToFront() { frontmost = nullptr; }
    bool inFront(const Program& program) const { return frontmost.get() == &program; }
    bool hostInFront() const { return frontmost == host; }
    std::shared_ptr<Program> host;
    std::shared_ptr<Program> frontmost;
    std::deque<std::shared_ptr<Program>> programs;

    // ---- Accessibility ----

    bool trusted = true;
    // How often the user was asked for the permission.
    int permissionPrompts = 0;
    // What the system-wide element finds focused; absent: the focused field of the program in front.
    std::optional<AttributeAnswer> systemWideFocus;
    // The time limit that a question to a program that hangs runs into.
    Seconds accessibilityTimeout = std::chrono::milliseconds{250};
    // The handle that the accessibility interface gives out for a field or window, to compare with.
    platform::AXUIElementRef elementOf(const Field& field) const;
    platform::AXUIElementRef elementOf(const ProgramWindow& window) const;

    // ---- Pasteboard ----

    // Another program puts this on the pasteboard; a given one, if it matters.
    void putOnPasteboard(std::vector<Item> items);
    void putOnPasteboard(std::vector<Item> items, const Program& by);
    void putOnPasteboard(std::string_view string);
    void emptyPasteboard();
    // The plain text there, or absent.
    std::optional<std::string> pasteboardText() const;
    const std::vector<Item>& pasteboardItems() const { return *pasteboard.items; }
    // The time limit that waiting for the data of a program that hangs runs into.
    Seconds pasteboardTimeout = std::chrono::milliseconds{500};
    PasteboardState pasteboard;
    void changePasteboard(std::vector<Item> items, const std::string& by);

    // ---- Keyboard and hot keys ----

    // The user's layouts; the first is in use. None at all is possible.
    std::vector<KeyboardLayout> layouts = {KeyboardLayout::us()};
    // The modifier keys the user holds, locks included.
    platform::CGEventFlags heldModifiers = 0;
    // The user presses and releases a key, with those modifiers besides the ones held. The host's hot key
    // runs at the next turn of the main loop.
    void userPresses(platform::CGKeyCode keyCode, platform::CGEventFlags modifiers = 0);
    HotKeys hotKeys;

    // False: there is no source for synthetic events.
    bool hasEventSource = true;
    // Says which synthetic events cannot be made; empty: all can.
    std::function<bool(platform::CGKeyCode keyCode, bool keyDown)> refusesKeyEvent;
    // Every synthetic event posted, in order.
    std::vector<platform::KeyboardEvent> postedEvents;
    // The program in front gets a keystroke.
    void deliverKeystroke(Keystroke keystroke);

    // ---- Screens, sounds, links, files, menus ----

    // Their visible frames; the first is the main screen. None at all is possible.
    std::vector<platform::Rect> screens = {{0, 0, 1440, 860}};
    // What the desktop keeps under the windows' autosave names.
    std::map<std::string, platform::Rect, std::less<>> savedFrames;
    int beeps = 0;
    bool opensLinks = true;
    // What was asked to be opened, whether or not it was.
    std::vector<std::string> openedLinks;
    // The system's sentence about why backups cannot be told; absent: they can.
    std::optional<std::string> backupFailure;
    // Paths that backups leave out.
    std::set<std::string> excludedFromBackup;

    // ---- The system and its language model ----

    OperatingSystem operatingSystem;
    LanguageModel languageModel;

    // ---- The host's own life ----

    // The interface of the youngest view controller. Without one the program ends with a line that says so.
    Interface& interface() const;
    // The windows that live, oldest first.
    std::vector<platform::Window*> hostWindows;
    std::vector<Interface*> interfaces;
    // The user's quit command, and the user's click on the icon of the running program; at the next turn.
    void userQuits();
    void userReopensHost();
    // True once the host has ended: its main queue stands still from then on.
    bool hostEnded = false;
    // What the delegate answered to each request to end.
    std::vector<platform::ApplicationTerminateReply> terminateReplies;
    // How each postponed request was settled.
    std::vector<bool> settledTerminations;
    bool terminationPending = false;
    platform::ApplicationDelegate* applicationDelegate = nullptr;
    std::unique_ptr<platform::Menu> mainMenu;
    // The item of the main menu with that identifier; null when there is none.
    platform::MenuItem* menuItem(std::string_view identifier) const;
    // The user chooses that item, at the next turn; false when it is greyed or not there.
    bool userChooses(std::string_view identifier);
    // Whether the interface's view has the keyboard.
    bool interfaceTakesKeys = false;
    bool canPerform(platform::Selector action) const;
    void perform(platform::Selector action);
    // The items' actions that ran, but for the one that ends the host.
    std::vector<platform::Selector> performedActions;
    void endHost();

    // ---- What happened ----

    Journal journal;
    void note(std::string what) { journal.write(time(), std::move(what)); }

    // Source of identifiers; the same in every world.
    std::mt19937_64 random{20};
};

} // namespace simulated
