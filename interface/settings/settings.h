// What the person has chosen, as plain values. docs/help.html says what each one does.
#pragma once

#include "client/desktop.h"
#include "language/phrase.h"
#include "settings/instruction.h"

#include <string>
#include <vector>

namespace quillmark {

enum class WayOfWorking {
    review, // the hot key shows the window, the person applies
    atOnce, // rewritten and put in without the window
};

enum class ChosenLanguage { likeTheDesktop, english, korean };

struct Settings {
    HotKey hotKey = {};
    std::vector<std::string> excludedApps = {};
    WayOfWorking way = WayOfWorking::review;
    ChosenLanguage language = ChosenLanguage::likeTheDesktop;
    bool statusIcon = true;
    // Empty: those of a new installation, in the language in use.
    std::vector<Instruction> instructions = {};
    // Addresses of model servers that were found by themselves, by the person's answer when first asked.
    std::vector<std::string> trustedServers = {};
    std::vector<std::string> declinedServers = {};
    bool introduced = false;     // the first page has been seen
    bool closeExplained = false; // the person knows that closing the window does not quit

    friend bool operator==(const Settings&, const Settings&) = default;
};

// At least one; the first is what the hot key does.
std::vector<Instruction> instructionsOf(const Settings& settings);

// The one chosen, else that of the desktop.
Language languageIn(const Settings& settings);

} // namespace quillmark
