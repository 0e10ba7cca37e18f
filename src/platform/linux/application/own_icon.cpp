#include "platform/linux/application/own_icon.h"

#include "platform/linux/base/data_files.h"

#include <gtk/gtk.h>

namespace platform {

void useOwnIcon() {
    if (const auto icons = dataFile("icons"); !icons.empty())
        gtk_icon_theme_append_search_path(gtk_icon_theme_get_default(), icons.c_str());
    gtk_window_set_default_icon_name("quillmark-host");
}

} // namespace platform
