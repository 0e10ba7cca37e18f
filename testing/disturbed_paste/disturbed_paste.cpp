#include "testing/disturbed_paste/disturbed_paste.h"

#include "flutter/arguments.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <thread>

namespace testbed {

namespace {

using flutter::EncodableMap;
using flutter::EncodableValue;
using By = Disturbance::By;

constexpr std::string_view original = "one two three";
constexpr std::string_view selected = "two";
constexpr std::string_view rewrite = "REWRITE";
constexpr std::string_view replacement = "quite another text";

constexpr std::array all{
    Disturbance{"nothing"},
    Disturbance{"text replaced", By::program, "text 0 quite another text"},
    Disturbance{"text appended", By::program, "append 0 !"},
    Disturbance{"selection moved", By::program, "select 0 0 3"},
    Disturbance{"focus to another field", By::program, "focus 1"},
    Disturbance{"focus to a password field", By::program, "focus 2"},
    Disturbance{"person types", By::person, "x"},
    Disturbance{"hot key's modifiers again", By::person, "Alt+Shift", true},
};

std::string replaced(std::string_view text, std::string_view part, std::string_view with) {
    std::string result(text);
    return result.replace(result.find(part), part.size(), with);
}

// Happens in its own time; the destructor waits for it.
std::jthread happening(const Disturbance& disturbance, Fields& program, milliseconds moment) {
    if (disturbance.by == By::program)
        program.command("later " + std::to_string(moment.count()) + " " + std::string(disturbance.does));
    if (disturbance.by != By::person) return {};
    return std::jthread([disturbance, moment] {
        Keyboard keyboard;
        std::this_thread::sleep_for(moment);
        keyboard.hold(disturbance.does);
        if (disturbance.held) std::this_thread::sleep_for(milliseconds(100));
    });
}

} // namespace

std::span<const Disturbance> disturbances() { return all; }

DisturbedPaste::DisturbedPaste(Desktop& desktop, std::string_view kindOfField)
    : desktop_(desktop), program_(desktop, {std::string(kindOfField), "entry", "password"}) {
    host_.bringToFront(desktop); // or it would come to the front by itself later
    host_.call("initialize", EncodableMap{});
}

Outcome DisturbedPaste::run(const Disturbance& disturbance, bool wholeField, milliseconds moment) {
    for (const auto* command : {"text 0 one two three", "text 1", "text 2", "focus 0"})
        program_.command(command);
    if (!wholeField) program_.command("select 0 4 7");
    if (!desktop_.bringToFront(program_.process().pid()))
        throw std::runtime_error("The program does not come to the front.");
    const std::string token = capture();
    if (token.empty()) throw std::runtime_error("The field was not captured.");
    Outcome outcome;
    {
        const std::jthread meanwhile = happening(disturbance, program_, moment);
        outcome.answer = paste(token);
        std::this_thread::sleep_for(moment); // it has begun to happen by then
    }
    const auto texts = settledTexts();
    outcome.text = texts[0];
    outcome.inPasswordField = !texts[2].empty();
    outcome.typed =
        std::ranges::any_of(texts, [](const auto& text) { return text.find(rewrite) != std::string::npos; });
    outcome.wrong = !texts[1].empty() || !texts[2].empty() || !isRight(disturbance, wholeField, texts[0]);
    return outcome;
}

std::string DisturbedPaste::capture() {
    desktop_.keyboard.hold("Alt+Shift+space");
    const auto sent = host_.nextCall("capture");
    desktop_.keyboard.letGoAll();
    return textOf(sent.value_or(EncodableValue()), "token");
}

std::string DisturbedPaste::paste(const std::string& token) {
    const auto outcome = host_.call("paste", EncodableMap{{"text", rewrite}, {"token", token}});
    const auto* value = std::get_if<EncodableValue>(&outcome);
    const auto* answer = value ? flutter::asString(*value) : nullptr;
    return answer ? *answer : "error";
}

std::vector<std::string> DisturbedPaste::texts() {
    constexpr std::string_view before = "\"text\": \"";
    const std::string dump = program_.dump();
    std::vector<std::string> texts;
    for (std::size_t at = dump.find(before); at != std::string::npos; at = dump.find(before, at)) {
        at += before.size();
        texts.push_back(dump.substr(at, dump.find('"', at) - at));
    }
    return texts;
}

// Once nothing has changed for a while.
std::vector<std::string> DisturbedPaste::settledTexts() {
    auto last = texts();
    for (int same = 0; same < 3;) {
        std::this_thread::sleep_for(milliseconds(15));
        auto now = texts();
        same = now == last ? same + 1 : 0;
        last = std::move(now);
    }
    return last;
}

// Either nothing was typed, or all of it before the disturbance.
bool DisturbedPaste::isRight(const Disturbance& disturbance, bool wholeField, const std::string& text) const {
    const std::string pasted = wholeField ? std::string(rewrite) : replaced(original, selected, rewrite);
    if (disturbance.name == "text replaced") return text == replacement || text == pasted;
    if (disturbance.name == "text appended")
        return text == std::string(original) + "!" || text == pasted + "!";
    if (disturbance.name != "person types") return text == original || text == pasted;
    const std::string typed = wholeField ? "x" + std::string(original) : replaced(original, selected, "x");
    return text == typed || text == replaced(pasted, rewrite, std::string(rewrite) + "x");
}

} // namespace testbed
