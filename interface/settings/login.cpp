#include "settings/login.h"

#include "settings/free.h"

#include <glib.h>

#include <memory>

namespace quillmark {

namespace {

constexpr auto group = G_KEY_FILE_DESKTOP_GROUP;
constexpr auto enabled =
    "X-GNOME-Autostart-enabled"; // older than "Hidden", and what some desktops' settings write

std::string quoted(const std::string& path) {
    std::string result = "\"";
    for (const char c : path) {
        if (c == '"' || c == '\\' || c == '`' || c == '$') result += '\\';
        result += c;
        if (c == '%') result += '%';
    }
    return result + '"';
}

} // namespace

std::filesystem::path loginFile() {
    return std::filesystem::path(g_get_user_config_dir()) / "autostart" / "quillmark-host.desktop";
}

bool startsAtLogin(const std::filesystem::path& file) {
    const std::unique_ptr<GKeyFile, Free> keys(g_key_file_new());
    if (!g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, nullptr)) return false;
    if (g_key_file_get_boolean(keys.get(), group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr)) return false;
    return !g_key_file_has_key(keys.get(), group, enabled, nullptr) ||
           g_key_file_get_boolean(keys.get(), group, enabled, nullptr);
}

std::optional<std::string> setStartsAtLogin(const std::filesystem::path& file, bool starts,
                                            const std::string& host) {
    const std::unique_ptr<GKeyFile, Free> keys(g_key_file_new());
    g_key_file_set_string(keys.get(), group, G_KEY_FILE_DESKTOP_KEY_TYPE, "Application");
    g_key_file_set_string(keys.get(), group, G_KEY_FILE_DESKTOP_KEY_NAME, "Quillmark");
    g_key_file_set_string(keys.get(), group, G_KEY_FILE_DESKTOP_KEY_ICON, "quillmark-host");
    g_key_file_set_string(keys.get(), group, G_KEY_FILE_DESKTOP_KEY_EXEC,
                          (quoted(host) + " --background").c_str());
    g_key_file_set_boolean(keys.get(), group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, !starts);

    g_mkdir_with_parents(file.parent_path().c_str(), 0755);
    gsize length = 0;
    const std::unique_ptr<char, Free> text(g_key_file_to_data(keys.get(), &length, nullptr));
    GError* error = nullptr;
    g_file_set_contents(file.c_str(), text.get(), static_cast<gssize>(length), &error);
    const std::unique_ptr<GError, Free> failure(error);
    return failure ? std::optional<std::string>(failure->message) : std::nullopt;
}

} // namespace quillmark
