// The settings as a file: a key file that only this person may read, written whole or not at all.
#pragma once

#include "settings/settings.h"

#include <filesystem>
#include <optional>

namespace quillmark {

// $XDG_CONFIG_HOME/quillmark/interface.conf
std::filesystem::path settingsFile();

struct LoadedSettings {
    Settings settings = {};
    // Where a file that could not be read was put, so that nothing in it is lost; the settings are the
    // default then.
    std::optional<std::filesystem::path> setAside = {};
    bool found = false; // there was a file, readable or not
};

LoadedSettings loadSettings(const std::filesystem::path& file);

// Makes the folder too. Absent: done; else the system's words on why not.
std::optional<std::string> saveSettings(const std::filesystem::path& file, const Settings& settings);

} // namespace quillmark
