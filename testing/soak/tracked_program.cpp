#include "testing/soak/tracked_program.h"

#include <algorithm>
#include <stdexcept>

namespace soak {

namespace {

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

std::size_t offset(const std::string& text, std::size_t characters) {
    std::size_t at = 0;
    for (; at < text.size(); ++at)
        if (startsCharacter(text[at]) && characters-- == 0) break;
    return at;
}

// As gtk_fields reads it.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text)
        result += c == '\n' ? "\\n" : c == '\\' ? "\\\\" : std::string(1, c);
    return result;
}

// The next string in what gtk_fields dumps, from behind its opening quote on.
std::string unquoted(const std::string& dump, std::size_t& at) {
    std::string text;
    for (; at < dump.size() && dump[at] != '"'; ++at) {
        if (dump[at] != '\\') {
            text += dump[at];
        } else {
            const char c = dump[++at];
            text += c == 'n' ? '\n' : c == 't' ? '\t' : c;
        }
    }
    return text;
}

} // namespace

std::size_t length(const std::string& text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, startsCharacter));
}

bool goTo(testbed::Desktop& desktop, testbed::WindowId window) {
    constexpr unsigned long onAll = 0xFFFFFFFF;
    desktop.awaitWindowManager(); // the host's window may be on its way to this workspace
    const auto workspace = desktop.workspace(window).value_or(onAll);
    if (workspace != onAll && workspace != desktop.workspace()) desktop.goToWorkspace(workspace);
    return desktop.activate(window);
}

std::string part(const std::string& text, std::size_t start, std::size_t end) {
    const std::size_t from = offset(text, start);
    return text.substr(from, offset(text, end) - from);
}

TrackedProgram::TrackedProgram(testbed::Desktop& desktop, std::string title, std::vector<std::string> kinds,
                               Chance& chance)
    : desktop_(desktop), title_(std::move(title)), kinds_(std::move(kinds)) {
    start(chance);
}

void TrackedProgram::start(Chance& chance) {
    expected_.clear();
    std::vector<std::string> fields;
    for (std::size_t field = 0; field < kinds_.size(); ++field) {
        expected_.push_back(chance.words(takesLines(field)));
        fields.push_back(kinds_[field] + "=" + escaped(text(field)));
    }
    fields_ = std::make_unique<testbed::Fields>(desktop_, fields, title_);
}

void TrackedProgram::restart(Chance& chance) {
    fields_.reset();
    start(chance);
}

testbed::Fields& TrackedProgram::fields() const {
    if (!fields_) throw std::runtime_error(title_ + " does not run any more.");
    return *fields_;
}

testbed::WindowId TrackedProgram::window() {
    std::vector<testbed::WindowId> own;
    // A window manager that has just started has not taken them yet.
    if (!testbed::waitUntil([&] { return !(own = desktop_.windows(pid())).empty(); }))
        throw std::runtime_error(title_ + " has no window.");
    return own.front();
}

void TrackedProgram::bringToFront() {
    if (goTo(desktop_, window())) return;
    const auto front = desktop_.activeWindow();
    throw std::runtime_error(title_ + " does not come to the front; there is " +
                             (front ? '"' + desktop_.title(*front) + '"' : "nothing") + ".");
}

void TrackedProgram::focus(std::size_t field) { fields().command("focus " + std::to_string(field)); }

void TrackedProgram::select(std::size_t field, std::size_t start, std::size_t end) {
    focus(field);
    fields().command("select " + std::to_string(field) + ' ' + std::to_string(start) + ' ' +
                     std::to_string(end));
}

void TrackedProgram::setText(std::size_t field, const std::string& text) {
    fields().command("text " + std::to_string(field) + ' ' + escaped(text));
    expect(field, text);
}

std::vector<std::string> TrackedProgram::texts() {
    const std::string dump = fields().dump();
    constexpr std::string_view key = "\"text\": \"";
    std::vector<std::string> texts;
    for (std::size_t at = 0; (at = dump.find(key, at)) != std::string::npos;) {
        at += key.size();
        texts.push_back(unquoted(dump, at));
    }
    return texts;
}

bool TrackedProgram::soonHolds(std::size_t field, const std::string& text) {
    return testbed::waitUntil([&] { return texts()[field] == text; }, testbed::milliseconds(3000));
}

std::vector<std::string> TrackedProgram::faults() {
    for (std::size_t field = 0; field < kinds_.size() && soonHolds(field, text(field)); ++field) {
    }
    const auto now = texts();
    std::vector<std::string> faults;
    for (std::size_t field = 0; field < kinds_.size(); ++field) {
        if (now[field] != text(field))
            faults.push_back("field " + std::to_string(field) + " of " + title_ + " holds \"" + now[field] +
                             "\" and not \"" + text(field) + "\"");
        expect(field, now[field]);
    }
    return faults;
}

} // namespace soak
