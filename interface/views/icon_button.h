// A button with one of the toolkit's icons, for what many rows offer.
#pragma once

#include "views/icon.h"
#include "views/look.h"

#include <gtkmm/button.h>

#include <string>

namespace quillmark {

class IconButton : public Gtk::Button {
public:
    IconButton(const std::string& icon, const std::string& name) {
        set_image(*Gtk::make_managed<Icon>(icon));
        set_tooltip_text(name);
        nameFor(*this, name);
        addClass(*this, look::compact);
    }
};

} // namespace quillmark
