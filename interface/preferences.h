// The person's settings as they are now: in memory, and saved whenever they change.
#pragma once

#include "settings/settings_file.h"

#include <functional>

namespace quillmark {

class Preferences {
public:
    // Called after each change.
    using Changed = std::function<void(const Settings& before)>;

    Preferences(std::filesystem::path file, Changed changed);

    const Settings& settings() const { return loaded_.settings; }
    // Where a file that could not be read has been put.
    const std::optional<std::filesystem::path>& setAside() const { return loaded_.setAside; }
    // Why the latest change could not be saved, in the system's words; it counts until the program ends.
    const std::optional<std::string>& problem() const { return problem_; }

    void change(const std::function<void(Settings&)>& how);

private:
    std::filesystem::path file_;
    Changed changed_;
    LoadedSettings loaded_;
    std::optional<std::string> problem_;
};

} // namespace quillmark
