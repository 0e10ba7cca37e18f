#include "testing/compat/kinds.h"

namespace compat {

extern const Keys secondLine{"Control+Home", "Down", "Shift+End"};
extern const Keys words{"Home",        "Right",       "Right",       "Right",       "Right",
                        "Right",       "Shift+Right", "Shift+Right", "Shift+Right", "Shift+Right",
                        "Shift+Right", "Shift+Right", "Shift+Right", "Shift+Right", "Shift+Right"};

Target editor(std::string name, std::string package, Command command, std::string title) {
    return {.name = std::move(name),
            .package = std::move(package),
            .command = std::move(command),
            .files = {{"note.txt", document}},
            .title = std::move(title),
            .text = document,
            .select = secondLine,
            .selected = "teh words",
            .unselect = {"Control+Home"},
            .reasons = {{"password", "has none"}}};
}

Target fields(std::string name, std::string package, const Command& program, const std::string& kind,
              bool manyLines) {
    const auto with = [&](const std::string& which, const std::string& text) {
        Command command = program;
        command.insert(command.end(), {which, text});
        return command;
    };
    return {.name = std::move(name),
            .package = std::move(package),
            .command = with(kind, manyLines ? document : line),
            .title = "Fields",
            .text = manyLines ? document : line,
            .select = manyLines ? secondLine : words,
            .selected = "teh words",
            .unselect = {manyLines ? "Control+Home" : "Home"},
            .password = with("password", "secret")};
}

namespace {

// 50 characters, with tabs and with the line end of Windows.
const std::string manyScripts = "teh words\tfox 😀 cafe\u0301 שלום 👩\u200d👩\u200d👧 한국어 مرحبا -----\r\n";

} // namespace

void makeLong(Target& target, int lines) {
    std::string text;
    for (int count = 0; count < lines; ++count)
        text += manyScripts;
    text.resize(text.size() - 2);
    for (auto& [name, content] : target.files)
        if (const auto at = content.find(target.text); at != content.npos)
            content.replace(at, target.text.size(), text);
    for (std::string& word : target.command)
        if (word == target.text) word = text;
    std::erase(text, '\r');
    target.text = target.selected = target.rewrite = text;
    target.select = {"Control+a"};
    for (std::size_t at = 0; (at = target.rewrite.find("teh", at)) != std::string::npos;)
        target.rewrite.replace(at, 3, "the");
    target.password.reset();
    target.reasons["password"] = "has none";
}

std::vector<Target> allTargets() {
    std::vector<Target> targets;
    addEditors(targets);
    addOffice(targets);
    addBrowsers(targets);
    addTerminals(targets);
    addOthers(targets);
    return targets;
}

} // namespace compat
