#include "platform/linux/application/dialog.h"

#include "platform/linux/application/own_icon.h"

#include <gtk/gtk.h>
#include <gtkmm/main.h>
#include <gtkmm/messagedialog.h>

namespace platform {
namespace {

bool isGtkReady() {
    if (gdk_display_get_default() != nullptr) return true;
    g_set_prgname("quillmark-host");
    gdk_set_allowed_backends("*");
    if (gtk_init_check(nullptr, nullptr) == FALSE) return false;
    Gtk::Main::init_gtkmm_internals();
    useOwnIcon();
    return true;
}

} // namespace

int showDialog(const std::string& heading, const std::string& sentence,
               const std::vector<std::string>& buttons) {
    if (!isGtkReady()) return 0;
    Gtk::MessageDialog dialog(heading, false, Gtk::MESSAGE_WARNING, Gtk::BUTTONS_NONE, true);
    dialog.set_title("Quillmark");
    dialog.set_position(Gtk::WIN_POS_CENTER);
    dialog.set_secondary_text(sentence);
    int number = 0;
    for (const auto& label : buttons)
        dialog.add_button(label, number++);
    dialog.set_default_response(number - 1);
    return std::max(0, dialog.run());
}

} // namespace platform
