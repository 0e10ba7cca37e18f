// What the settings pages ask of the program. What is changed takes effect at once.
#pragma once

#include "check/finding.h"
#include "model/chosen_server.h"
#include "model/consent.h"
#include "settings/programs.h"
#include "settings/settings.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillmark {

struct SettingsActions {
    std::function<const Settings&()> settings;
    std::function<void(const std::function<void(Settings&)>& how)> change;

    // Whether the host could register it, and uses it from now on; else the one before stays.
    std::function<void(const HotKey&, std::function<void(bool registered)>)> tryHotKey;

    std::function<const ModelStatus&()> model;
    std::function<ChosenServer()> chosenServer;
    // An empty address: one is looked for. Absent key: it stays as it is.
    struct ServerChoice {
        std::string address = {}, model = {};
        std::optional<std::string> key = {};
    };
    // A sentence on what is wrong with the choice; empty: it counts now.
    std::function<void(const ServerChoice&, std::function<void(std::string problem)>)> chooseServer;
    std::function<void(bool use)> useModel; // the one that was found by itself
    std::function<void()> lookForModel;

    std::function<std::vector<ProgramName>()> recentPrograms; // newest first
    std::function<std::vector<ProgramName>()> installedPrograms;

    std::function<bool()> startsAtLogin;
    std::function<std::optional<std::string>(bool)> setStartsAtLogin; // the system's words on why not
    std::function<bool()> hasPlaceForIcon;

    // What there is on this desktop; absent with a sentence on why it could not be looked at.
    using Checked =
        std::function<void(const std::optional<std::vector<Finding>>&, const std::string& problem)>;
    std::function<void(Checked)> check;
    // To the pasteboard; not while a text is being put in.
    std::function<void(const std::string& text, std::function<void(bool copied)>)> copy;

    std::function<void()> help;
    std::function<void()> back = {}; // the window sets it
};

} // namespace quillmark
