#include "testing/soak/captures.h"

#include "flutter/arguments.h"

namespace soak {

using namespace std::chrono_literals;
using flutter::EncodableMap;
using testbed::milliseconds;

namespace {

struct Capture {
    std::string text, source, title, token;
};

// Where the user is, with a part of the text selected or nothing.
struct Place {
    TrackedProgram& program;
    std::size_t field;
    std::size_t start = 0, end = 0; // in code points

    std::string selected() const { return part(program.text(field), start, end); }
    bool isAll() const { return start == end; }
    std::string with(const std::string& rewrite) const {
        const std::string& text = program.text(field);
        return isAll() ? rewrite : part(text, 0, start) + rewrite + part(text, end, length(text));
    }
};

Place goSomewhere(World& world, Chance& chance) {
    TrackedProgram& program = *chance.from(world.programs);
    Place place{program, program.anyField(chance)};
    program.bringToFront();
    if (!chance.oneIn(3)) {
        place.start = chance.below(length(program.text(place.field)));
        place.end = place.start + 1 + chance.below(length(program.text(place.field)) - place.start);
    }
    program.select(place.field, place.start, place.end);
    world.note("goes to field " + std::to_string(place.field) + " of " + program.title() +
               (place.isAll() ? "" : ", selects \"" + place.selected() + '"'));
    return place;
}

// Presses the hot key, perhaps holding it until the capture has come.
std::optional<Capture> pressHotKey(World& world, Chance& chance,
                                   milliseconds limit = testbed::reactionLimit) {
    auto& keyboard = world.desktop.keyboard;
    const bool holds = chance.oneIn(2);
    keyboard.hold("Alt+Shift+space");
    if (!holds) keyboard.letGo("space+Shift+Alt");
    const auto sent = world.host->nextCall("capture", limit);
    if (holds) keyboard.letGo("space+Shift+Alt");
    if (!sent) return std::nullopt;
    const auto text = [&](const char* key) {
        const std::string* value = flutter::asString(flutter::member(flutter::asMap(*sent), key));
        return value ? *value : std::string();
    };
    Capture capture{text("text"), text("source"), text("title"), text("token")};
    world.note("captures \"" + capture.text + "\" as " + capture.source);
    return capture;
}

std::optional<Capture> capture(World& world, Chance& chance, const Place& place) {
    auto got = pressHotKey(world, chance);
    const std::string text = place.isAll() ? place.program.text(place.field) : place.selected();
    if (!got)
        world.fault("the hot key captured nothing");
    else if (got->text != text || got->source != (place.isAll() ? "field" : "selection") ||
             got->title != place.program.title() || got->token.empty())
        world.fault("captured \"" + got->text + "\" (" + got->source + ", " + got->title + ") and not \"" +
                    text + "\" of " + place.program.title());
    return got;
}

struct Paste {
    std::uint32_t call;
    testbed::Clock::time_point start = testbed::Clock::now();
    testbed::Clock::time_point possible = start; // since then no modifier is held
};

Paste startPaste(World& world, const std::string& text, const std::string& token) {
    const Paste paste{world.host->startCall("paste", EncodableMap{{"text", text}, {"token", token}})};
    world.copied.isText(text);
    return paste;
}

std::string awaitReply(World& world, const Paste& paste) {
    std::string reply = world.answer(paste.call);
    world.note("the paste is answered " + reply);
    return reply;
}

void expectCopiedOnly(World& world, const Paste& paste) {
    if (const auto reply = awaitReply(world, paste); reply != "copied-only")
        world.fault("the paste was answered " + reply + " and not copied-only");
}

// The text arrives, unless the host has run out of time or waited for a program's answer in vain, as happens
// on a busy machine.
void expectPasted(World& world, const Paste& paste, const Place& place, const std::string& rewrite) {
    constexpr milliseconds longestPaste{1000}, longestAnswer{250}; // of the host's
    const std::string reply = awaitReply(world, paste);
    const auto now = testbed::Clock::now();
    const bool isLate = now - paste.start >= longestPaste || now - paste.possible >= longestAnswer;
    if (reply == "pasted")
        place.program.expect(place.field, place.with(rewrite));
    else if (reply != "copied-only" || !isLate)
        world.fault("the paste was answered " + reply + " and not pasted");
}

void pasteBack(World& world, Chance& chance) {
    const Place place = goSomewhere(world, chance);
    const auto got = capture(world, chance, place);
    if (!got) return;
    chance.pause(200ms);
    const std::string rewrite = chance.words(place.program.takesLines(place.field));
    expectPasted(world, startPaste(world, rewrite, got->token), place, rewrite);
}

void captureOnly(World& world, Chance& chance) { capture(world, chance, goSomewhere(world, chance)); }

// What changes between the capture and the paste.
using Change = void (*)(World&, Chance&, const Place&);
void otherText(World&, Chance& chance, const Place& place) {
    place.program.setText(place.field, chance.words(false));
}
void otherSelection(World&, Chance&, const Place& place) {
    place.program.select(place.field, 0, place.isAll() ? 1 : 0);
    // A whole field is replaced whatever is selected in it: so go elsewhere.
    if (place.isAll()) place.program.focus(place.program.passwordField());
}
void passwordField(World&, Chance&, const Place& place) {
    place.program.focus(place.program.passwordField());
}
void ended(World&, Chance& chance, const Place& place) { place.program.restart(chance); }

void pasteAfterAChange(World& world, Chance& chance) {
    static constexpr std::array<Change, 4> changes{otherText, otherSelection, passwordField, ended};
    const Place place = goSomewhere(world, chance);
    const auto got = capture(world, chance, place);
    if (!got) return;
    const std::size_t change = chance.below(changes.size());
    world.note("change " + std::to_string(change));
    changes[change](world, chance, place);
    expectCopiedOnly(world, startPaste(world, chance.words(false), got->token));
}

// The user goes on to another program while the paste is under way: it arrives in its place or nowhere.
void pasteWhileTheUserLeaves(World& world, Chance& chance) {
    const Place place = goSomewhere(world, chance);
    const auto got = capture(world, chance, place);
    if (!got) return;
    const std::string rewrite = chance.words(false);
    const auto paste = startPaste(world, rewrite, got->token);
    chance.pause(120ms);
    const bool toTerminal = chance.oneIn(3);
    world.note(toTerminal ? "goes to the terminal" : "goes to the other program");
    const auto& other = world.programs[world.programs.front().get() == &place.program ? 1 : 0];
    // In vain where the host brings the program to the front only afterwards.
    goTo(world.desktop, toTerminal ? world.terminal.window() : other->window());
    if (awaitReply(world, paste) != "pasted") return;
    // It arrives soon, or was held back at the last moment.
    const std::string after = place.with(rewrite);
    if (place.program.soonHolds(place.field, after)) place.program.expect(place.field, after);
}

void pasteWithHeldModifiers(World& world, Chance& chance) {
    const Place place = goSomewhere(world, chance);
    const auto got = capture(world, chance, place);
    if (!got) return;
    const char* held = chance.oneIn(2) ? "Control+Shift" : "Alt";
    world.desktop.keyboard.hold(held);
    const std::string rewrite = chance.words(false);
    auto paste = startPaste(world, rewrite, got->token);
    const auto second = world.host->startCall("paste", EncodableMap{{"text", "not now"}});
    if (const auto reply = world.answer(second); reply != "busy")
        world.fault("a second paste was answered " + reply + " and not busy");
    chance.pause(600ms);
    world.desktop.keyboard.letGo(held);
    paste.possible = testbed::Clock::now();
    expectPasted(world, paste, place, rewrite);
}

void copyToThePasteboard(World& world, Chance& chance) {
    const std::string token = chance.oneIn(2) ? "" : "00000000-0000-4000-8000-000000000000";
    expectCopiedOnly(world, startPaste(world, chance.words(true), token));
}

void copyInAProgram(World& world, Chance& chance) { world.note(world.copied.copy(chance)); }

void captureAPassword(World& world, Chance& chance) {
    TrackedProgram& program = *chance.from(world.programs);
    program.bringToFront();
    program.focus(program.passwordField());
    if (pressHotKey(world, chance, 600ms)) world.fault("captured a password");
}

void captureInTheTerminal(World& world, Chance& chance) {
    world.terminal.bringToFront();
    const auto got = pressHotKey(world, chance);
    if (!got || !got->token.empty()) world.fault("a capture in a terminal has to come, without a token");
}

void captureWithTheHostInFront(World& world, Chance& chance) {
    world.call("show");
    // A program that serves the pasteboard badly holds a capture up for as long as the host bears with it.
    constexpr auto longestCapture = 5000ms;
    pressHotKey(world, chance, longestCapture); // or none: the place of the latest capture may be gone
}

void hotKeyAgainAndAgain(World& world, Chance& chance) {
    goSomewhere(world, chance);
    const bool holdsModifiers = chance.oneIn(2);
    if (holdsModifiers) {
        world.note("with held modifiers");
        world.desktop.keyboard.hold("Alt+Shift");
    }
    const std::size_t presses = 2 + chance.below(3);
    for (std::size_t press = 0; press < presses; ++press) {
        world.desktop.keyboard.press(holdsModifiers ? "space" : "Alt+Shift+space");
        chance.pause(700ms);
    }
    if (holdsModifiers) world.desktop.keyboard.letGo("Alt+Shift");
    std::size_t captures = 0;
    while (world.host->nextCall("capture", captures < presses ? testbed::reactionLimit : milliseconds(300)))
        ++captures;
    world.note(std::to_string(presses) + " presses, " + std::to_string(captures) + " captures");
    if (captures != presses)
        world.fault(std::to_string(presses) + " presses of the hot key made " + std::to_string(captures) +
                    " captures");
}

} // namespace

std::vector<Step> captureSteps() {
    return {{"paste back", 30, pasteBack},
            {"capture only", 6, captureOnly},
            {"paste after a change", 10, pasteAfterAChange},
            {"paste while the user leaves", 8, pasteWhileTheUserLeaves},
            {"paste with held modifiers", 4, pasteWithHeldModifiers},
            {"copy to the pasteboard", 4, copyToThePasteboard},
            {"copy in a program", 8, copyInAProgram},
            {"capture a password", 4, captureAPassword},
            {"capture in the terminal", 4, captureInTheTerminal},
            {"capture with the host in front", 3, captureWithTheHostInFront},
            {"hot key again and again", 4, hotKeyAgainAndAgain}};
}

} // namespace soak
