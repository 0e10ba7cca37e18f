#include "platform/linux/menu/about_panel.h"

#include "platform/linux/menu/help_pages.h"

#include <gtkmm/aboutdialog.h>

#include <memory>
#include <string>

namespace platform {
namespace {

constexpr const char* fullName = "글빛나래 · Quillmark";

// Where no font has Hangul, boxes would stand in its place.
std::string readableName(Gtk::Widget& widget) {
    const auto layout = widget.create_pango_layout(fullName);
    return layout->get_unknown_glyphs_count() == 0 ? fullName : "Quillmark";
}

constexpr const char* helpLink = "help:";

// A build without a site of its own leads to the help that comes with it.
void addLinks(Gtk::AboutDialog& panel) {
    const std::string site = QUILLMARK_SITE;
    if (!site.empty()) {
        panel.set_website(site);
    } else if (hasHelpPages()) {
        panel.set_website(helpLink);
        panel.set_website_label("Help");
    }
    panel.signal_activate_link().connect(
        [](const Glib::ustring& link) {
            if (link == helpLink)
                showHelpPages();
            else
                showSite(link);
            return true;
        },
        false);
}

} // namespace

void showAboutPanel(Gtk::Window* owner) {
    static std::unique_ptr<Gtk::AboutDialog> panel;
    if (!panel) {
        panel = std::make_unique<Gtk::AboutDialog>();
        panel->set_program_name(readableName(*panel));
        panel->set_version(QUILLMARK_VERSION);
        panel->set_copyright("© 2026 Quillmark host contributors");
        panel->set_license_type(Gtk::LICENSE_MIT_X11);
        addLinks(*panel);
        panel->set_logo_icon_name("quillmark-host");
        panel->signal_response().connect([](int) { panel->hide(); });
    }
    if (owner != nullptr) panel->set_transient_for(*owner);
    panel->present();
}

} // namespace platform
