#include "settings/settings_file.h"

#include "settings/free.h"

#include <glib.h>
#include <glib/gstdio.h>

#include <memory>

namespace quillmark {

namespace {

using KeyFile = std::unique_ptr<GKeyFile, Free>;
using Error = std::unique_ptr<GError, Free>;

constexpr auto general = "Interface", hotKeyGroup = "Hot key", instructionGroup = "Instruction ";

// One group of the file. A value that is missing or wrong leaves what is there.
class Group {
public:
    Group(GKeyFile* file, std::string name) : file_(file), name_(std::move(name)) {}

    bool exists() const { return g_key_file_has_group(file_, name_.c_str()); }

    void read(const char* key, std::string& value) const {
        const std::unique_ptr<char, Free> text(g_key_file_get_string(file_, name_.c_str(), key, nullptr));
        if (text) value = text.get();
    }
    void read(const char* key, bool& value) const {
        GError* error = nullptr;
        const bool read = g_key_file_get_boolean(file_, name_.c_str(), key, &error) != FALSE;
        if (!Error(error)) value = read;
    }
    void read(const char* key, int& value) const {
        GError* error = nullptr;
        const int read = g_key_file_get_integer(file_, name_.c_str(), key, &error);
        if (!Error(error)) value = read;
    }
    void read(const char* key, std::vector<std::string>& value) const {
        gsize length = 0;
        const std::unique_ptr<char*, Free> list(
            g_key_file_get_string_list(file_, name_.c_str(), key, &length, nullptr));
        if (list) value.assign(list.get(), list.get() + length);
    }

    void write(const char* key, const std::string& value) {
        g_key_file_set_string(file_, name_.c_str(), key, value.c_str());
    }
    void write(const char* key, bool value) { g_key_file_set_boolean(file_, name_.c_str(), key, value); }
    void write(const char* key, int value) { g_key_file_set_integer(file_, name_.c_str(), key, value); }
    void write(const char* key, const std::vector<std::string>& value) {
        std::vector<const char*> list;
        for (const auto& text : value)
            list.push_back(text.c_str());
        g_key_file_set_string_list(file_, name_.c_str(), key, list.data(), list.size());
    }

private:
    GKeyFile* file_;
    std::string name_;
};

// Both directions in one place, so that neither forgets a key.
void exchange(const auto& group, auto& settings, auto move) {
    move(group(general), "excluded_programs", settings.excludedApps);
    move(group(general), "status_icon", settings.statusIcon);
    move(group(general), "trusted_servers", settings.trustedServers);
    move(group(general), "declined_servers", settings.declinedServers);
    move(group(general), "introduced", settings.introduced);
    move(group(general), "close_explained", settings.closeExplained);
    move(group(hotKeyGroup), "key_code", settings.hotKey.keyCode);
    move(group(hotKeyGroup), "command", settings.hotKey.command);
    move(group(hotKeyGroup), "option", settings.hotKey.option);
    move(group(hotKeyGroup), "control", settings.hotKey.control);
    move(group(hotKeyGroup), "shift", settings.hotKey.shift);
}

void exchangeInstruction(auto group, auto& instruction, auto move) {
    move(group, "name", instruction.name);
    move(group, "prompt", instruction.prompt);
    move(group, "question", instruction.question);
    move(group, "key", instruction.key);
    move(group, "corrects", instruction.corrects);
}

Settings read(GKeyFile* file) {
    const auto group = [file](const std::string& name) { return Group(file, name); };
    const auto move = [](const Group& from, const char* key, auto& value) { from.read(key, value); };
    Settings settings;
    exchange(group, settings, move);
    std::string way, language;
    group(general).read("way_of_working", way);
    group(general).read("language", language);
    if (way == "at_once") settings.way = WayOfWorking::atOnce;
    if (language == "en") settings.language = ChosenLanguage::english;
    if (language == "ko") settings.language = ChosenLanguage::korean;
    for (int number = 1; group(instructionGroup + std::to_string(number)).exists(); ++number) {
        Instruction instruction;
        exchangeInstruction(group(instructionGroup + std::to_string(number)), instruction, move);
        if (!instruction.name.empty() && !instruction.prompt.empty())
            settings.instructions.push_back(std::move(instruction));
    }
    return settings;
}

KeyFile written(const Settings& settings) {
    KeyFile file(g_key_file_new());
    const auto group = [&](const std::string& name) { return Group(file.get(), name); };
    const auto move = [](Group to, const char* key, const auto& value) { to.write(key, value); };
    exchange(group, settings, move);
    group(general).write("way_of_working",
                         std::string(settings.way == WayOfWorking::atOnce ? "at_once" : "review"));
    group(general).write("language", std::string(settings.language == ChosenLanguage::english  ? "en"
                                                 : settings.language == ChosenLanguage::korean ? "ko"
                                                                                               : "desktop"));
    for (std::size_t i = 0; i < settings.instructions.size(); ++i)
        exchangeInstruction(group(instructionGroup + std::to_string(i + 1)), settings.instructions[i], move);
    return file;
}

} // namespace

std::filesystem::path settingsFile() {
    return std::filesystem::path(g_get_user_config_dir()) / "quillmark" / "interface.conf";
}

LoadedSettings loadSettings(const std::filesystem::path& file) {
    std::error_code unreadable;
    if (!std::filesystem::exists(file, unreadable) && !unreadable) return {};
    const KeyFile keys(g_key_file_new());
    GError* error = nullptr;
    g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, &error);
    if (!Error(error)) return {.settings = read(keys.get()), .found = true};
    auto aside = file;
    aside += ".broken";
    std::filesystem::rename(file, aside, unreadable);
    return {.setAside = aside, .found = true};
}

std::optional<std::string> saveSettings(const std::filesystem::path& file, const Settings& settings) {
    constexpr int onlyThisPerson = 0600, folderOfThisPerson = 0700;
    g_mkdir_with_parents(file.parent_path().c_str(), folderOfThisPerson);
    gsize length = 0;
    const std::unique_ptr<char, Free> text(g_key_file_to_data(written(settings).get(), &length, nullptr));
    GError* error = nullptr;
    g_file_set_contents_full(file.c_str(), text.get(), static_cast<gssize>(length),
                             G_FILE_SET_CONTENTS_CONSISTENT, onlyThisPerson, &error);
    const Error failure(error);
    return failure ? std::optional<std::string>(failure->message) : std::nullopt;
}

} // namespace quillmark
