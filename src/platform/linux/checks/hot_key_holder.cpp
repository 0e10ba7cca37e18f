#include "platform/linux/checks/hot_key_holder.h"

#include "platform/linux/base/handle.h"
#include "platform/linux/checks/key_combination.h"
#include "platform/linux/checks/window_manager_check.h"
#include "platform/linux/x11/base/xlib_connection.h"

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

namespace platform {
namespace {

namespace fs = std::filesystem;

// Where a window manager, or its desktop, keeps its keys.
struct KeysFile {
    const char* windowManager;
    const char* file;    // in the user's folder for settings, else in the system's
    const char* pattern; // of one combination: the first group
};

constexpr std::array keysFiles{
    KeysFile{"Xfwm4", "xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml", "name=\"([^\"]+)\""},
    KeysFile{"Openbox", "openbox/rc.xml", "key=\"([^\"]+)\""},
    KeysFile{"i3", "i3/config", "\\n\\s*bindsym\\s+(?:--release\\s+)?(\\S+)"},
    KeysFile{"KWin", "kglobalshortcutsrc", "=([^,\\t\\n]+)"},
};

// Desktops that keep them in GSettings, by the beginning of the schemas' names.
struct KeysSchemas {
    const char* windowManager;
    const char* prefix;
};

constexpr std::array keysSchemas{
    KeysSchemas{"Metacity", "org.gnome."},  KeysSchemas{"GNOME Shell", "org.gnome."},
    KeysSchemas{"Mutter", "org.gnome."},    KeysSchemas{"Marco", "org.mate."},
    KeysSchemas{"Muffin", "org.cinnamon."},
};

std::optional<std::string> contentsOf(const fs::path& path) {
    std::ifstream file(path);
    if (!file) return std::nullopt;
    std::ostringstream text;
    text << '\n' << file.rdbuf();
    return text.str();
}

// The pattern's first group and its second (empty if it has none) wherever it matches. The text may hold
// bytes that are not UTF-8, and zeros.
std::vector<std::pair<std::string, std::string>> found(const char* pattern, const std::string& text) {
    const Handle<GRegex, g_regex_unref> regex(g_regex_new(pattern, G_REGEX_RAW, {}, nullptr));
    GMatchInfo* first = nullptr;
    g_regex_match_full(regex.get(), text.data(), std::ssize(text), 0, {}, &first, nullptr);
    const Handle<GMatchInfo, g_match_info_unref> match(first);
    const auto group = [&](int number) {
        const Handle<char, g_free> words(g_match_info_fetch(match.get(), number));
        return std::string(words ? words.get() : "");
    };
    std::vector<std::pair<std::string, std::string>> all;
    for (; g_match_info_matches(match.get()); g_match_info_next(match.get(), nullptr))
        all.emplace_back(group(1), group(2));
    return all;
}

// i3 has names for words: "set $mod Mod1".
std::string withoutVariables(std::string text) {
    for (const auto& [name, value] : found("\\n\\s*set\\s+(\\$\\w+)\\s+(\\S+)", text))
        for (auto at = text.find(name); at != std::string::npos; at = text.find(name, at + value.size()))
            text.replace(at, name.size(), value);
    return text;
}

bool fileHas(const std::string& text, const char* pattern, const KeyCombination& keys) {
    return std::ranges::any_of(found(pattern, text),
                               [&](const auto& groups) { return readKeyCombination(groups.first) == keys; });
}

std::optional<std::string> holderInFiles(const std::string& windowManager, const KeyCombination& keys) {
    for (const auto& [manager, file, pattern] : keysFiles) {
        if (windowManager != manager) continue;
        for (const fs::path& folder :
             {fs::path(g_get_user_config_dir()), fs::path("/etc/xdg"), fs::path("/etc")}) {
            const auto text = contentsOf(folder / file);
            if (!text) continue;
            if (fileHas(withoutVariables(*text), pattern, keys))
                return windowManager + " (" + (folder / file).string() + ")";
            break; // the user's file replaces the system's
        }
    }
    return std::nullopt;
}

bool settingHas(GSettings* settings, const char* name, const KeyCombination& keys) {
    const Handle<GVariant, g_variant_unref> value(g_settings_get_value(settings, name));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
        return readKeyCombination(g_variant_get_string(value.get(), nullptr)) == keys;
    if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY)) return false;
    const Handle<const char*, g_free> all(g_variant_get_strv(value.get(), nullptr));
    for (const char** one = all.get(); *one != nullptr; ++one)
        if (readKeyCombination(*one) == keys) return true;
    return false;
}

std::optional<std::string> holderInSchema(GSettingsSchemaSource* source, const char* id,
                                          const KeyCombination& keys) {
    const Handle<GSettingsSchema, g_settings_schema_unref> schema(
        g_settings_schema_source_lookup(source, id, TRUE));
    const Handle<GSettings, g_object_unref> settings(g_settings_new(id));
    const Handle<char*, g_strfreev> names(g_settings_schema_list_keys(schema.get()));
    for (char** name = names.get(); *name != nullptr; ++name)
        if (settingHas(settings.get(), *name, keys))
            return "the desktop's setting " + std::string(id) + " " + *name;
    return std::nullopt;
}

std::optional<std::string> holderInSettings(const std::string& windowManager, const KeyCombination& keys) {
    const auto known = std::ranges::find(keysSchemas, windowManager, &KeysSchemas::windowManager);
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    if (known == keysSchemas.end() || source == nullptr) return std::nullopt;
    char** fixed = nullptr;
    g_settings_schema_source_list_schemas(source, TRUE, &fixed, nullptr);
    const Handle<char*, g_strfreev> ids(fixed);
    for (char** id = ids.get(); *id != nullptr; ++id) {
        const std::string name = *id;
        if (!name.starts_with(known->prefix) ||
            (name.find("keybindings") == std::string::npos && name.find("media-keys") == std::string::npos))
            continue;
        if (auto holder = holderInSchema(source, *id, keys)) return holder;
    }
    return std::nullopt;
}

// "grp:lalt_lshift_toggle" as "alt" and "shift"; empty for an option that is something else.
std::set<std::string> modifiersThatSwitch(const std::string& option) {
    const auto groups = found("^grp:[lr]?(alt|shift|ctrl)_[lr]?(alt|shift|ctrl)_toggle(?:_bidir)?$", option);
    if (groups.empty()) return {};
    std::set<std::string> modifiers{groups[0].first, groups[0].second};
    if (modifiers.erase("ctrl") > 0) modifiers.insert("control");
    return modifiers;
}

} // namespace

std::optional<std::string> hotKeyHolder(const std::string& keys) {
    const auto windowManager = runningWindowManager();
    if (!windowManager) return std::nullopt;
    const KeyCombination wanted = readKeyCombination(keys);
    if (auto holder = holderInFiles(*windowManager, wanted)) return holder;
    return holderInSettings(*windowManager, wanted);
}

// The X server keeps the rules of its layout on the root window: five strings, the options last.
std::optional<std::string> layoutSwitchWithin(const std::string& keys) {
    auto& connection = *x11::XlibConnection::shared();
    const auto rules = connection.text(connection.root(), connection.atom("_XKB_RULES_NAMES")).value_or("");
    const auto held = readKeyCombination(keys).modifiers;
    for (const auto& [option, none] : found("(grp:\\w+)", rules)) {
        const auto modifiers = modifiersThatSwitch(option);
        if (!modifiers.empty() && std::ranges::includes(held, modifiers)) return option;
    }
    return std::nullopt;
}

} // namespace platform
