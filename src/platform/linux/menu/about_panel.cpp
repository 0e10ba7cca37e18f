#include "platform/linux/menu/about_panel.h"

#include <gtkmm/aboutdialog.h>

#include <memory>

namespace platform {

void showAboutPanel(Gtk::Window* owner) {
    static std::unique_ptr<Gtk::AboutDialog> panel;
    if (!panel) {
        panel = std::make_unique<Gtk::AboutDialog>();
        panel->set_program_name("글빛나래 · Quillmark");
        panel->set_version(QUILLMARK_VERSION);
        panel->set_logo_icon_name("quillmark-host");
        panel->signal_response().connect([](int) { panel->hide(); });
    }
    if (owner != nullptr) panel->set_transient_for(*owner);
    panel->present();
}

} // namespace platform
