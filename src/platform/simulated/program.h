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

// Other programs, as accessibility and the keyboard find them. Owned by the world; tests hold references,
// which stay good while the world lives, and change the public fields whenever they like.
namespace simulated {

// What the read of one attribute gives instead of the truth: absent makes the read fail.
using AttributeAnswer = std::optional<platform::AXAttributeValue>;
using AttributeAnswers = std::map<std::string, AttributeAnswer, std::less<>>;

// What a field puts on the pasteboard when it is told to copy.
enum class Copies { selection, nothing, image };

// A text field. This world's programs count their text in bytes of UTF-8.
struct Field {
    std::string role = "AXTextArea";
    std::string subrole = {};
    std::string value = {};
    platform::CFRange selection = {};
    bool editable = true;
    Copies copies = Copies::selection;
    AttributeAnswers answers = {};

    std::string selectedText() const;
    void selectAll();
    void replaceSelection(std::string_view text);
};

// A field that shows no one what is in it.
Field passwordField(std::string value = {});

struct ProgramWindow {
    std::string title;
    AttributeAnswers answers = {};
    std::deque<Field> fields = {};
};

// How a program that is asked for its elements behaves: it shows them, it shows them only after it was asked
// to (both attributes written), it has none to show, or it hangs and the question runs into its time limit.
enum class Accessibility { shown, shownWhenAsked, missing, hung };

struct Keystroke {
    platform::CGKeyCode keyCode = 0;
    platform::CGEventFlags flags = 0;

    bool operator==(const Keystroke&) const = default;
};

class Program : public std::enable_shared_from_this<Program> {
public:
    std::string name = "Writer";
    // The name it gives the user; absent when it has none.
    std::optional<std::string> localizedName = name;
    std::optional<std::string> bundleIdentifier = "org.example.Writer";
    pid_t pid = 0;
    bool ended = false;

    Accessibility accessibility = Accessibility::shown;
    // From the second attribute written until the elements show.
    Seconds showsAfter{0};
    // How long every accessibility question takes to be answered.
    Seconds reactionTime{0};
    AttributeAnswers answers = {};

    bool activates = true;
    Seconds activatesAfter{0};

    // From a keystroke until it does something.
    Seconds keystrokesActAfter{0};

    std::deque<ProgramWindow> windows = {};
    ProgramWindow* focusedWindow = nullptr;
    Field* focusedField = nullptr;

    // What it was sent, and how often each attribute was read of it or its elements.
    std::vector<Keystroke> keystrokes = {};
    std::map<std::string, int, std::less<>> reads = {};

    // Opens a window and gives it the focus.
    ProgramWindow& openWindow(std::string title);
    // Adds a field to the focused window (and opens one if there is none) and gives it the focus.
    Field& addField(Field field);
    void focus(Field& field);

    bool manualAccessibility = false;
    bool enhancedUserInterface = false;
    std::optional<TimePoint> showsFrom = {};
};

} // namespace simulated
