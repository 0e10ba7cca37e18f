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
