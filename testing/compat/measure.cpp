#include "testing/compat/measure.h"

#include "testing/compat/trial.h"
#include "testing/desktop/pasteboard_programs.h"

#include <vector>

namespace compat {

using pasteboard_test::Representation;

namespace {

const std::string earlier = "earlier on the pasteboard";
constexpr std::size_t mostShown = 80; // bytes of a text

std::string quoted(const std::string& text) {
    if (text.size() <= mostShown) return "\"" + text + "\"";
    std::size_t end = mostShown;
    while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80)
        --end;
    return "\"" + text.substr(0, end) + "…\" (" + std::to_string(text.size()) + " bytes)";
}

// Adds to what was seen in that cell before.
void add(Outcomes& outcomes, const char* column, const Outcome& more) {
    Outcome& outcome = outcomes[column];
    if (more.milliseconds) outcome.milliseconds = more.milliseconds;
    if (!more.note.empty()) outcome.note = more.note;
    if (outcome.wrong.empty()) outcome.wrong = more.wrong;
}

// How a capture went of which `text` was to be read. `place` is its source when it can be pasted back.
Outcome judged(const std::optional<Captured>& captured, const std::string& text, const std::string& place) {
    if (!captured) return {.note = "nothing happens"};
    Outcome outcome{captured->milliseconds};
    if (captured->text == text && captured->source == place)
        outcome.note = captured->token.empty() ? "without a place" : "";
    else if (captured->text == text && captured->source == "clipboard")
        outcome.note = "copied";
    else if (captured->text == earlier && captured->token.empty())
        outcome.note = "not read";
    else if (captured->isTruncated && captured->token.empty() && text.starts_with(captured->text))
        outcome.note = "its beginning";
    else if (captured->token.empty())
        outcome.note = "another text: " + quoted(captured->text);
    else
        outcome.wrong = "captured " + quoted(captured->text) + " with a place";
    return outcome;
}

std::vector<std::optional<Representation>> pasteboard() {
    std::vector<std::optional<Representation>> contents;
    for (const char* target : {"UTF8_STRING", "text/html"})
        contents.push_back(pasteboard_test::given(target));
    return contents;
}

class Measurement {
public:
    Measurement(testbed::Desktop& desktop, testbed::Host& host, const Target& target)
        : desktop_(desktop), host_(host), target_(target) {}

    Outcomes all() {
        inSelection();
        if (!target_.reasons.contains(columns::field)) inField();
        if (!target_.newWindow.empty()) inTwoWindows();
        if (target_.password) inPassword();
        for (const auto& [column, reason] : target_.reasons)
            outcomes_[column] = {.note = reason, .wrong = outcomes_[column].wrong};
        return outcomes_;
    }

private:
    void inSelection() {
        Trial trial(desktop_, host_, target_, target_.command);
        trial.putOnPasteboard(earlier);
        trial.select();
        const auto first = trial.capture();
        add(outcomes_, columns::first, judged(first, target_.selected, "selection"));
        if (first) checkNames(trial, *first);

        const pasteboard_test::Owner owner({{"UTF8_STRING", "UTF8_STRING", 8, earlier},
                                            {"text/html", "text/html", 8, "<b>" + earlier + "</b>"}});
        const auto before = pasteboard();
        const auto captured = trial.capture();
        add(outcomes_, columns::selection, judged(captured, target_.selected, "selection"));
        add(outcomes_, columns::pasteboard, {.wrong = pasteboard() == before ? "" : "it changed"});
        checkKeys(columns::selection);

        const std::string rewritten = changed(target_.selected, target_.rewrite);
        if (captured) checkPaste(trial, *captured, columns::intoSelection, rewritten);
        if (target_.clicksAt > 0) checkInterruption(trial);
    }

    // A copy keystroke would interrupt what runs in a terminal.
    void checkInterruption(Trial& trial) {
        trial.click(); // selects nothing
        trial.capture();
        if (trial.hasFile("interrupted"))
            add(outcomes_, columns::selection, {.wrong = "what ran in the terminal was interrupted"});
    }

    void inField() {
        Trial trial(desktop_, host_, target_, target_.command);
        trial.putOnPasteboard(earlier);
        if (!target_.fill.empty()) trial.select(); // tells that the text is there
        trial.press(target_.unselect);
        trial.capture(); // the first one has a cell of its own
        const auto captured = trial.capture();
        add(outcomes_, columns::field, judged(captured, target_.text, "field"));
        checkKeys(columns::field);
        if (captured && !captured->token.empty() && target_.holdsPicture)
            add(outcomes_, columns::field, {.wrong = "a picture would be lost"});
        if (captured) checkPaste(trial, *captured, columns::intoField, target_.rewrite);
    }

    // The person goes to a second window of the same program before the rewritten text comes.
    void inTwoWindows() {
        Trial trial(desktop_, host_, target_, target_.command);
        trial.putOnPasteboard(earlier);
        trial.select();
        const auto captured = trial.capture();
        if (!captured || captured->token.empty())
            return add(outcomes_, columns::windows, {.note = "without a place"});
        const testbed::WindowId other = trial.openAnother();
        const auto pasted = trial.paste(target_.rewrite, captured->token);
        add(outcomes_, columns::windows, {.milliseconds = pasted.milliseconds, .note = pasted.reply});
        const std::string wanted =
            pasted.reply == "pasted" ? changed(target_.selected, target_.rewrite) : target_.text;
        if (const auto text = trial.textOnceItIs(wanted); text != wanted)
            add(outcomes_, columns::windows, {.wrong = "the text is then " + quoted(text)});
        trial.bringToFront(other);
        if (const auto text = trial.textOnceItIs(""); !text.empty())
            add(outcomes_, columns::windows, {.wrong = "in the other window is " + quoted(text)});
    }

    void inPassword() {
        Trial trial(desktop_, host_, target_, *target_.password);
        trial.putOnPasteboard(earlier);
        const auto captured = trial.capture();
        if (!captured)
            add(outcomes_, columns::password, {.note = "refused"});
        else
            add(outcomes_, columns::password,
                {.milliseconds = captured->milliseconds,
                 .note = captured->text == earlier ? "not read" : "",
                 .wrong = captured->text == earlier ? "" : "captured " + quoted(captured->text)});
    }

    void checkPaste(Trial& trial, const Captured& captured, const char* column, const std::string& expected) {
        if (captured.token.empty()) return add(outcomes_, column, {.note = columns::nothing});
        const auto pasted = trial.paste(target_.rewrite, captured.token);
        const bool isPasted = pasted.reply == "pasted";
        const std::string wanted = isPasted ? expected : target_.text;
        const std::string text = trial.textOnceItIs(wanted);
        add(outcomes_, column,
            {.milliseconds = pasted.milliseconds,
             .note = isPasted ? "" : pasted.reply,
             .wrong = text == wanted ? "" : "the text is then " + quoted(text)});
        checkKeys(column);
        if (!isPasted) return;
        if (target_.undo.empty()) return add(outcomes_, columns::undo, {.note = "has none"});
        trial.press(target_.undo);
        const std::string undone = trial.textOnceItIs(target_.text);
        if (undone == target_.text) return add(outcomes_, columns::undo, {});
        const std::string byHand = undoneByHand(column, expected);
        add(outcomes_, columns::undo,
            {.note = "leaves " + quoted(undone) +
                     (byHand == undone ? ", as after a person's paste"
                                       : "; after a person's paste " + quoted(byHand))});
    }

    // What one undo leaves when a person has done the same paste with the program's own keys.
    std::string undoneByHand(const char* column, const std::string& expected) {
        Trial trial(desktop_, host_, target_, target_.command);
        if (column == columns::intoSelection)
            trial.select();
        else
            trial.press(target_.selectAll);
        trial.pasteByHand(target_.rewrite);
        if (trial.textOnceItIs(expected) != expected) return "another text before";
        trial.press(target_.undo);
        return trial.textOnceItIs(target_.text);
    }

    std::string changed(const std::string& part, const std::string& rewrite) const {
        std::string text = target_.text;
        if (const auto at = text.find(part); at != text.npos) text.replace(at, part.size(), rewrite);
        return text;
    }

    void checkNames(const Trial& trial, const Captured& captured) {
        Outcome names{.note = captured.applicationName};
        if (captured.applicationName.empty()) names.note = "no name";
        if (captured.title != trial.windowTitle())
            names.note += ", title " + quoted(captured.title) + " for " + quoted(trial.windowTitle());
        add(outcomes_, columns::names, names);
    }

    void checkKeys(const char* column) {
        if (!testbed::waitUntil([&] { return desktop_.keyboard.nothingIsHeld(); },
                                testbed::milliseconds(1000)))
            add(outcomes_, column, {.wrong = "a key stays down"});
    }

    testbed::Desktop& desktop_;
    testbed::Host& host_;
    const Target& target_;
    Outcomes outcomes_;
};

} // namespace

Outcomes measure(testbed::Desktop& desktop, testbed::Host& host, const Target& target) {
    return Measurement(desktop, host, target).all();
}

} // namespace compat
