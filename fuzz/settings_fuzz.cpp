// The files with the settings may have been changed by hand or cut off by a full disk: any bytes. What has
// been read must be read again the same once it has been saved.
#include "check.h"
#include "platform/models/settings/settings_file.h"
#include "settings/settings_file.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// In memory, and this process's own.
const fs::path& folder() {
    static const fs::path made = [] {
        auto path = fs::path("/dev/shm") / ("quillmark-settings-fuzz." + std::to_string(getpid()));
        fs::create_directories(path);
        std::atexit([] { fs::remove_all(folder()); });
        return path;
    }();
    return made;
}

void interfaceSettings(const fs::path& file) {
    const auto loaded = quillmark::loadSettings(file);
    check(loaded.found && loaded.setAside.has_value() != fs::exists(file));
    check(!quillmark::saveSettings(file, loaded.settings));
    check(quillmark::loadSettings(file).settings == loaded.settings);
}

void modelSettings(std::string_view text, const fs::path& file) {
    const auto read = platform::parseSettingsFile(text, "file");
    if (!read.problem.empty()) return;
    check(platform::writeSettingsFile(file, read.settings).empty());
    check(platform::readSettingsFile(file).settings == read.settings);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = asText({data, size});
    const auto file = folder() / "interface.conf";
    std::ofstream(file, std::ios::binary) << text;
    interfaceSettings(file);
    modelSettings(text, folder() / "language-model.conf");
    return 0;
}
