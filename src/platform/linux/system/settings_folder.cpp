#include "platform/settings_folder.h"

#include <glib.h>

#include <cstdlib>

namespace platform {

// By the XDG Base Directory Specification, which has relative paths ignored. Not g_get_user_config_dir(),
// which remembers the first answer.
std::filesystem::path settingsFolder() {
    const char* set = std::getenv("XDG_CONFIG_HOME");
    const std::filesystem::path base(set ? set : "");
    return (base.is_absolute() ? base : std::filesystem::path(g_get_home_dir()) / ".config") / "quillmark";
}

} // namespace platform
