// A program as a screen reader finds it (AT-SPI): its controls by role and name, and what can be done with
// them.
#pragma once

#include "testing/desktop/wait.h"

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace testbed {

class ScreenReader {
public:
    // Of the program with that process; it need not be there yet.
    explicit ScreenReader(pid_t program);
    ~ScreenReader();
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    // Of several controls of that kind the first on the screen; roles as AT-SPI names them, such as "push
    // button". An empty name stands for any. Waits; false, empty or absent when it does not come in time.
    bool shows(const std::string& role, const std::string& name, milliseconds limit = reactionLimit);
    std::optional<std::string> text(const std::string& role, const std::string& name);
    // The parts of a text that have an attribute, such as "underline".
    std::vector<std::string> textWith(const std::string& attribute, const std::string& role,
                                      const std::string& name);
    bool hasState(const std::string& role, const std::string& name, int state);
    bool isSensitive(const std::string& role, const std::string& name);
    bool isFocused(const std::string& role, const std::string& name);
    bool isChecked(const std::string& role, const std::string& name);

    // As the control's own default does. Throws when it does not come.
    void press(const std::string& role, const std::string& name);
    void setText(const std::string& role, const std::string& name, const std::string& text);
    void focus(const std::string& role, const std::string& name);

    // Every control on the screen as "role: name", in order.
    std::vector<std::string> all();
    // Those that take the keyboard and have no name. Waits for the embedded view's; throws when none come.
    std::vector<std::string> unnamed();

private:
    struct Bus;
    std::unique_ptr<Bus> bus_;
};

} // namespace testbed
