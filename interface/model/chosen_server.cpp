#include "model/chosen_server.h"

#include "settings/free.h"

#include <glib.h>
#include <glib/gstdio.h>

#include <memory>

namespace quillmark {

namespace {

using KeyFile = std::unique_ptr<GKeyFile, Free>;

constexpr auto group = "Language Model";

KeyFile load(const std::filesystem::path& file) {
    KeyFile keys(g_key_file_new());
    g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
    return keys;
}

std::string value(const KeyFile& keys, const char* key) {
    const std::unique_ptr<char, Free> text(g_key_file_get_value(keys.get(), group, key, nullptr));
    return text ? text.get() : "";
}

} // namespace

std::filesystem::path chosenServerFile() {
    return std::filesystem::path(g_get_user_config_dir()) / "quillmark" / "language-model.conf";
}

ChosenServer readChosenServer(const std::filesystem::path& file) {
    const auto keys = load(file);
    return {value(keys, "address"), value(keys, "model"), !value(keys, "key").empty()};
}

std::optional<std::string> setServerKey(const std::filesystem::path& file, const std::string& key) {
    constexpr int onlyThisPerson = 0600;
    const auto keys = load(file);
    g_key_file_set_value(keys.get(), group, "key", key.c_str());
    gsize length = 0;
    const std::unique_ptr<char, Free> text(g_key_file_to_data(keys.get(), &length, nullptr));
    GError* error = nullptr;
    g_file_set_contents_full(file.c_str(), text.get(), static_cast<gssize>(length),
                             G_FILE_SET_CONTENTS_CONSISTENT, onlyThisPerson, &error);
    const std::unique_ptr<GError, Free> failure(error);
    return failure ? std::optional<std::string>(failure->message) : std::nullopt;
}

} // namespace quillmark
