#pragma once

#include "platform/models/settings/model_settings.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

// The user's settings in a key file (Desktop Entry Specification, "Basic format of the file"):
//
//     [Language Model]
//     address=https://models.example.org/v1
//     model=qwen3:8b
//     key=…
//     thinking=false
//
// Every line may be left out. The first line that is wrong is told with its number; those behind it are read
// all the same.

// A file that does not exist has no settings and no fault. One that others may write to is not believed.
ReadSettings readSettingsFile(const std::filesystem::path& file);

// From the text of the file, whose name goes into the sentence.
ReadSettings parseSettingsFile(std::string_view text, const std::string& fileName);

// Replaces the file by one that only this user may read. A sentence when that could not be done, else empty.
std::string writeSettingsFile(const std::filesystem::path& file, const ModelSettings& settings);

} // namespace platform
