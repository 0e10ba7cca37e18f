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

// A desktop in memory. A test creates one world, and everything that the seam declares acts on it; each new
// world starts empty. Tests set its state, let the host act, let time pass, and read its state. Main thread
// only.
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

    // The world that exists. Without one the program ends with a message.
    static World& current();
    static World* currentOrNull();

    // ---- Time: it passes only while something waits or the test says so ----

    // Since the world began.
    std::chrono::microseconds time() const;
    // An event of the world: takes place after that time, also while the host is blocked.
    void after(Seconds delay, std::function<void()> event);
    // Runs the main loop on what is due now.
    void settle();
    // Runs the main loop for that long.
    void runFor(Seconds duration);
    // Runs the main loop until no work, timer or event is left, or the host has ended.
    void run();
    // Runs the main loop until the condition holds; false when it does not within that time.
    bool runUntil(const std::function<bool()>& condition, Seconds within = Seconds{60});
    Clock clock;

    // ---- Programs ----

    // Starts a program, which is not in front yet. Its process identifier is a new one unless it is given.
    struct Description {
        std::string name = "Writer";
        std::optional<std::string> bundleIdentifier = "org.example.Writer";
        pid_t pid = 0;
    };
    Program& openProgram() { return openProgram(Description{}); }
    Program& openProgram(Description description);
    void end(Program& program);
    void bringToFront(Program& program);
    // Requests that the program come to the front; Program::activates and activatesAfter say what follows.
    void activate(Program& program);
    void bringHostToFront() { bringToFront(*host); }
    // From now on no program is in front.
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
    // What "AXFocusedUIElement" of the system-wide element gives; absent: the focused field of the program in
    // front.
    std::optional<AttributeRead> systemWideFocus;
    // How long a query to a program that hangs blocks.
    Seconds accessibilityTimeout = std::chrono::milliseconds{250};
    // The handle that accessibility gives out for a field or window.
    platform::AXUIElementRef elementOf(const Field& field) const;
    platform::AXUIElementRef elementOf(const ProgramWindow& window) const;

    // ---- Pasteboard ----

    // Another program, `by` or some other one, puts this on the pasteboard.
    void putOnPasteboard(std::vector<Item> items);
    void putOnPasteboard(std::vector<Item> items, const Program& by);
    void putOnPasteboard(std::string_view string);
    void emptyPasteboard();
    // Its plain text, or absent.
    std::optional<std::string> pasteboardText() const;
    const std::vector<Item>& pasteboardItems() const { return *pasteboard.items; }
    // How long a read of data from a program that hangs blocks.
    Seconds pasteboardTimeout = std::chrono::milliseconds{500};
    PasteboardState pasteboard;
    void changePasteboard(std::vector<Item> items, const std::string& by);

    // ---- Keyboard and hot keys ----

    // The user's layouts; the first is in use. May be empty.
    std::vector<KeyboardLayout> layouts = {KeyboardLayout::us()};
    // The modifier keys that the user holds, locks included.
    platform::CGEventFlags heldModifiers = 0;
    // The user presses and releases a key with those modifiers and the held ones. If that is a hot key of the
    // host, its handlers run at the next turn of the main loop.
    void userPresses(platform::CGKeyCode keyCode, platform::CGEventFlags modifiers = 0);
    HotKeys hotKeys;
    // How many keys the user has pressed.
    int keysPressed = 0;

    // False: an event source cannot be created.
    bool hasEventSource = true;
    // True for synthetic events that cannot be created; an empty function: all can.
    std::function<bool(platform::CGKeyCode keyCode, bool keyDown)> refusesKeyEvent;
    // Every synthetic event posted, in order.
    std::vector<platform::KeyboardEvent> postedEvents;
    // The keystrokes that wait for the end of the guard; null while there is no guard.
    std::vector<Keystroke>* guardedKeystrokes = nullptr;
    // The host's keystroke: goes to the program in front, or waits for the end of a guard.
    void postKeystroke(Keystroke keystroke);
    // Sends a keystroke to the program in front.
    void deliverKeystroke(Keystroke keystroke);

    // ---- Screens, sounds, links, files, menus ----

    // The visible frames of the screens; the first is the main screen. May be empty.
    std::vector<platform::Rect> screens = {{0, 0, 1440, 860}};
    // The frames that the desktop keeps, by autosave name.
    std::map<std::string, platform::Rect, std::less<>> savedFrames;
    int beeps = 0;
    bool opensLinks = true;
    // What the host asked to open, also when it was refused.
    std::vector<std::string> openedLinks;
    // Why marking a path fails; absent: it succeeds.
    std::optional<std::string> backupFailure;
    // The paths marked to be left out of backups.
    std::set<std::string> excludedFromBackup;

    // ---- The system and its language model ----

    OperatingSystem operatingSystem;
    LanguageModel languageModel;

    // ---- The host ----

    // The interface of the newest view controller. Without one the program ends with a message.
    Interface& interface() const;
    // The host's windows, oldest first.
    std::vector<platform::Window*> hostWindows;
    std::vector<Interface*> interfaces;
    // The user's quit command, and the user's click on the icon of the running program: at the next turn of
    // the main loop.
    void userQuits();
    void userReopensHost();
    void userAsksForCapture();     // by a command
    void terminationIsWithdrawn(); // by whoever had asked for it
    // Once the host has ended, nothing of its main queue runs any more.
    bool hostEnded = false;
    // What the delegate answered to each termination request.
    std::vector<platform::ApplicationTerminateReply> terminateReplies;
    // Each reply to a postponed termination request.
    std::vector<bool> settledTerminations;
    bool terminationPending = false;
    platform::ApplicationDelegate* applicationDelegate = nullptr;
    std::unique_ptr<platform::Menu> mainMenu;
    // The item of the main menu with that identifier; null when there is none.
    platform::MenuItem* menuItem(std::string_view identifier) const;
    // The user chooses that item, at the next turn of the main loop; false when it is greyed or not there.
    bool userChooses(std::string_view identifier);
    // Whether the interface's view has the keyboard.
    bool interfaceTakesKeys = false;
    bool canPerform(platform::Selector action) const;
    void perform(platform::Selector action);
    // The actions of chosen items, without `terminate`.
    std::vector<platform::Selector> performedActions;
    void endHost();

    // ---- What happened ----

    Journal journal;
    void note(std::string what) { journal.add(time(), std::move(what)); }

    // Where UUIDs come from; the same sequence in every world.
    std::mt19937_64 random{20};
};

} // namespace simulated
