// Whether the host starts when the person logs in (freedesktop.org Desktop Application Autostart
// Specification).
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace quillmark {

// $XDG_CONFIG_HOME/autostart/quillmark-host.desktop, which stands above one that the package installed.
std::filesystem::path loginFile();

bool startsAtLogin(const std::filesystem::path& file);

// `host` is the program's path. Absent: done; else the system's words on why not.
std::optional<std::string> setStartsAtLogin(const std::filesystem::path& file, bool starts,
                                            const std::string& host);

} // namespace quillmark
