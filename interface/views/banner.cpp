#include "views/banner.h"

#include "views/look.h"

#include <glibmm/main.h>

#include <utility>

namespace quillmark {

Banner::Banner() : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL, 8) {
    addClass(*this, look::banner);
    get_accessible()->set_role(Atk::ROLE_INFO_BAR); // screen readers say it as soon as it is shown
    icon_.set_valign(Gtk::ALIGN_START);
    message_.set_line_wrap();
    message_.set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
    message_.set_xalign(0);
    message_.set_selectable();
    choices_.set_valign(Gtk::ALIGN_CENTER);
    auto* column = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL, 6);
    column->pack_start(message_, Gtk::PACK_SHRINK);
    column->pack_start(choices_, Gtk::PACK_SHRINK);
    pack_start(icon_, Gtk::PACK_SHRINK);
    pack_start(*column, Gtk::PACK_EXPAND_WIDGET);
    show_all_children();
    set_no_show_all();
}

void Banner::show(const std::string& icon, const std::string& message, const std::vector<Choice>& choices) {
    std::string now = icon + message;
    for (const auto& choice : choices)
        now += '\n' + choice.name;
    if (std::exchange(shown_, now) == now && get_visible() == !message.empty()) return;
    icon_.set(icon);
    message_.set_text(message);
    choices_.clear();
    for (const auto& choice : choices) {
        auto* button = Gtk::make_managed<Gtk::Button>(choice.name);
        // Later: what it does may take the button away.
        button->signal_clicked().connect(
            [chosen = choice.chosen] { Glib::signal_idle().connect_once(chosen); });
        button->show();
        choices_.add(*button);
    }
    choices_.set_visible(!choices.empty());
    nameFor(*this, message);
    set_visible(!message.empty());
}

void Banner::takeFocus() { message_.grab_focus(); }

} // namespace quillmark
