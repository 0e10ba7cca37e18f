#include "views/settings_page.h"

#include "language/main_phrases.h"
#include "views/keys.h"

#include <utility>

namespace quillmark {

SettingsPage::SettingsPage(Actions actions)
    : Gtk::Box(Gtk::ORIENTATION_VERTICAL, 8), actions_(std::move(actions)),
      back_(say(phrases::back), keys::back) {
    set_border_width(12);
    back_.set_halign(Gtk::ALIGN_START);
    back_.signal_clicked().connect([this] { actions_.back(); });
    pack_start(back_, Gtk::PACK_SHRINK);
    show_all();
}

} // namespace quillmark
