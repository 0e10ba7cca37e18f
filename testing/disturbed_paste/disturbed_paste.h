// A paste into a real program, with something that happens at the same time, and what became of it.
#pragma once

#include "testing/desktop/desktop.h"
#include "testing/desktop/fields.h"
#include "testing/desktop/host.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace testbed {

// What happens during the paste.
struct Disturbance {
    enum class By { nobody, program, person };

    std::string_view name;
    By by = By::nobody;
    std::string_view does = {}; // the program's command, or the keys that the person presses
    bool held = false;          // the person holds them for a while
};

std::span<const Disturbance> disturbances();

struct Outcome {
    std::string answer;    // to "paste"
    std::string text = {}; // of the captured field, afterwards
    bool typed = false;    // the rewrite arrived somewhere
    bool wrong = false;    // in the wrong text or place, or it cost what was typed meanwhile
    bool inPasswordField = false;
};

// A host, and a program with a field to capture from, another field and a password field.
class DisturbedPaste {
public:
    // Kinds as in gtk_fields.cpp: "entry" or "textview".
    explicit DisturbedPaste(Desktop& desktop, std::string_view kindOfField);

    // Captures the selection or the whole field, and pastes a rewrite; the disturbance happens that long
    // after the paste was asked for.
    Outcome run(const Disturbance& disturbance, bool wholeField, milliseconds moment);

private:
    std::string capture();
    std::string paste(const std::string& token);
    std::vector<std::string> texts();
    std::vector<std::string> settledTexts();
    bool isRight(const Disturbance& disturbance, bool wholeField, const std::string& text) const;

    Desktop& desktop_;
    Host host_;
    Fields program_;
};

} // namespace testbed
