// A program of the table, started afresh and driven as a person drives it. What has become of its text is
// read through the program itself, by copying all of it.
#pragma once

#include "testing/compat/target.h"
#include "testing/desktop/desktop.h"
#include "testing/desktop/host.h"

#include <filesystem>
#include <optional>
#include <string>

namespace compat {

// What the host sent for a press of the hot key.
struct Captured {
    std::string text, source, token, applicationName, title;
    double milliseconds = 0; // from the key to the message
    bool isTruncated = false;
};

struct Pasted {
    std::string reply;
    double milliseconds = 0; // from the call to the reply
};

class Trial {
public:
    // Starts the program and gets into its field. Throws when its window does not come up.
    Trial(testbed::Desktop& desktop, testbed::Host& host, const Target& target, const Command& command);
    ~Trial();
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    // Throws when text that has to be typed does not get into the field.
    void select();
    void click();
    void press(const Keys& keys);
    void putOnPasteboard(const std::string& text);

    // Absent when the host sends nothing in time.
    std::optional<Captured> capture();
    // As an interface does it: its window comes to the front first.
    Pasted paste(const std::string& text, const std::string& token);

    // The same by a person, with the program's own keys.
    void pasteByHand(const std::string& text);

    // All text of the field once it is the expected one, or what it still is after a while.
    std::string textOnceItIs(const std::string& expected);
    std::string windowTitle() const { return desktop_.title(window_); }
    // Its second window, then in front. Throws when none comes up.
    testbed::WindowId openAnother();
    void bringToFront(testbed::WindowId window);
    // Whether a program in it has left a file of that name in the trial's folder.
    bool hasFile(const std::string& name) const { return std::filesystem::exists(folder_ / name); }

private:
    std::string text();

    testbed::Desktop& desktop_;
    testbed::Host& host_;
    const Target& target_;
    testbed::TemporaryFolder folder_;
    std::optional<testbed::Process> process_;
    testbed::WindowId window_ = 0;
    bool mayFetch_ = false; // the program, what was pasted last
};

} // namespace compat
