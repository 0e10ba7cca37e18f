// A program with text fields, and what they must hold.
#pragma once

#include "testing/desktop/fields.h"
#include "testing/soak/chance.h"

#include <memory>
#include <string>
#include <vector>

namespace soak {

class TrackedProgram {
public:
    // Kinds as in gtk_fields.cpp; the texts are drawn.
    TrackedProgram(testbed::Desktop& desktop, std::string title, std::vector<std::string> kinds,
                   Chance& chance);

    const std::string& title() const { return title_; }
    pid_t pid() const { return fields().process().pid(); }
    testbed::WindowId window();
    void bringToFront();
    // Ends it and starts it anew with other texts.
    void restart(Chance& chance);

    // Of the fields whose text may be captured.
    std::size_t anyField(Chance& chance) const { return chance.below(kinds_.size() - 1); }
    std::size_t passwordField() const { return kinds_.size() - 1; }
    bool takesLines(std::size_t field) const { return kinds_[field] == "textview"; }

    // As the program's own user would.
    void focus(std::size_t field);
    void select(std::size_t field, std::size_t start, std::size_t end); // in code points
    void setText(std::size_t field, const std::string& text);

    // What a field must hold.
    const std::string& text(std::size_t field) const { return expected_[field]; }
    void expect(std::size_t field, std::string text) { expected_[field] = std::move(text); }
    // Waits a moment for a text that may come or not.
    bool soonHolds(std::size_t field, const std::string& text);

    // What is wrong in it, a line each. Waits a moment for what must be there.
    std::vector<std::string> faults();

private:
    void start(Chance& chance);
    testbed::Fields& fields() const; // throws when it could not be started again
    std::vector<std::string> texts();

    testbed::Desktop& desktop_;
    std::string title_;
    std::vector<std::string> kinds_; // the last one is "password"
    std::vector<std::string> expected_;
    std::unique_ptr<testbed::Fields> fields_;
};

// As a person does who looks for it on the other workspaces too: openbox brings nothing to the front from
// there.
bool goTo(testbed::Desktop& desktop, testbed::WindowId window);

// The code points from `start` to before `end` of a text in UTF-8.
std::string part(const std::string& text, std::size_t start, std::size_t end);
std::size_t length(const std::string& text);

} // namespace soak
