// The server that the person has chosen, in the file in which the host looks for it (docs/model.md).
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quillmark {

struct ChosenServer {
    std::string address = {}; // empty: one is looked for
    std::string model = {};   // empty: the first that can answer
    bool hasKey = false;
};

// $XDG_CONFIG_HOME/quillmark/language-model.conf
std::filesystem::path chosenServerFile();

ChosenServer readChosenServer(const std::filesystem::path& file);

// The secret that the server wants to be told; it goes to no other. Absent: done; else the system's words on
// why not.
std::optional<std::string> setServerKey(const std::filesystem::path& file, const std::string& key);

} // namespace quillmark
