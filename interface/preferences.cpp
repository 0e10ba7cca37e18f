#include "preferences.h"

#include <utility>

namespace quillmark {

Preferences::Preferences(std::filesystem::path file, Changed changed)
    : file_(std::move(file)), changed_(std::move(changed)), loaded_(loadSettings(file_)) {}

void Preferences::change(const std::function<void(Settings&)>& how) {
    const auto before = loaded_.settings;
    how(loaded_.settings);
    if (loaded_.settings == before) return;
    problem_ = saveSettings(file_, loaded_.settings);
    changed_(before);
}

} // namespace quillmark
