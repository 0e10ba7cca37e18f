#pragma once

#include "platform/accessibility.h"
#include "platform/event.h"
#include "platform/simulated/clock.h"

#include <sys/types.h>

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Other programs, as the host finds them through accessibility and the keyboard. Owned by the world; tests
// keep references, which are valid as long as the world, and change the public fields at any time.
namespace simulated {

// The result of reading one attribute; absent when the read fails.
using AttributeRead = std::optional<platform::AXAttributeValue>;
// By attribute: what a read gives in place of the real value.
using AttributeOverrides = std::map<std::string, AttributeRead, std::less<>>;

// What a field puts on the pasteboard when it gets the copy keystroke.
enum class Copies { selection, nothing, image };

// A text field. Its program counts text in bytes of UTF-8.
struct Field {
    std::string role = "AXTextArea";
    std::string subrole = {};
    std::string value = {};
    platform::CFRange selection = {};
    bool editable = true;
    Copies copies = Copies::selection;
    AttributeOverrides overrides = {};

    std::string selectedText() const;
    void selectAll();
    void replaceSelection(std::string_view text);
};

// A field that shows bullets in place of its text and copies nothing.
Field passwordField(std::string value = {});

struct ProgramWindow {
    std::string title;
    AttributeOverrides overrides = {};
    std::deque<Field> fields = {};
};

// How a program answers accessibility queries.
enum class Accessibility {
    shown,          // at once
    shownWhenAsked, // only once AXManualAccessibility and AXEnhancedUserInterface were written
    missing,        // never: it has no elements
    hung,           // never: each query runs into its time limit
};

struct Keystroke {
    platform::CGKeyCode keyCode = 0;
    platform::CGEventFlags flags = 0;

    bool operator==(const Keystroke&) const = default;
};

class Program : public std::enable_shared_from_this<Program> {
public:
    std::string name = "Writer";
    std::optional<std::string> localizedName = name;
    std::optional<std::string> bundleIdentifier = "org.example.Writer";
    pid_t pid = 0;
    bool ended = false;

    Accessibility accessibility = Accessibility::shown;
    // With shownWhenAsked: from the second attribute written until the program answers.
    Seconds showsAfter{0};
    // How long every accessibility query takes.
    Seconds reactionTime{0};
    AttributeOverrides overrides = {};

    // Whether it comes to the front when asked, and how long it takes.
    bool activates = true;
    Seconds activatesAfter{0};

    // From a keystroke until it takes effect.
    Seconds keystrokesActAfter{0};

    std::deque<ProgramWindow> windows = {};
    ProgramWindow* focusedWindow = nullptr;
    Field* focusedField = nullptr;

    // What it received: keystrokes, and how often each attribute of the program or its elements was read.
    std::vector<Keystroke> keystrokes = {};
    std::map<std::string, int, std::less<>> reads = {};

    // Opens a window and focuses it.
    ProgramWindow& openWindow(std::string title);
    // Adds a field to the focused window, opening one if there is none, and focuses it.
    Field& addField(Field field);
    void focus(Field& field);

    bool manualAccessibility = false;
    bool enhancedUserInterface = false;
    std::optional<TimePoint> showsFrom = {};
};

} // namespace simulated
