#pragma once

#include "platform/models/settings/server_address.h"

#include <filesystem>
#include <optional>
#include <string>

namespace platform {

// Which language model the user wants. A plain value; what is left out is found by itself.
struct ModelSettings {
    std::optional<ServerAddress> address = {};
    std::string model = {}; // empty: the first of the server's that can answer
    std::string key = {};   // for the server; empty: none
    bool thinking = false;
    // Where Ollama listens on this computer, when it has been told another place than its usual one.
    std::optional<ServerAddress> ollama = {};

    bool operator==(const ModelSettings&) const = default;
};

// The settings, or a sentence that says what is wrong with them and where.
struct ReadSettings {
    ModelSettings settings = {};
    std::string problem = {}; // empty: none
    std::string source = {};  // the file's name, or "the environment"

    bool operator==(const ReadSettings&) const = default;
};

// Empty, or why no text may go there.
std::string problemWith(const ServerAddress& address);

// $XDG_CONFIG_HOME/quillmark/language-model.conf on Linux.
std::filesystem::path modelSettingsFile();

// As they are at this moment: from the file, or from the environment where
// QUILLMARK_LANGUAGE_MODEL_FROM_ENVIRONMENT=1 says so. Any thread.
ReadSettings readModelSettings();

} // namespace platform
