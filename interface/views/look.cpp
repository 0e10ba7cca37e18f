#include "views/look.h"

#include <atkmm/object.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

namespace quillmark {

void installLook() {
    constexpr auto sheet = R"(
        .quillmark-dim { opacity: 0.75; }
        .quillmark-key { font-size: 80%; opacity: 0.7; }
        .quillmark-heading { font-weight: bold; }
        button.quillmark-compact { padding: 2px 8px; min-height: 0; }
        .quillmark-banner { padding: 6px 8px; border: 1px solid @borders; border-radius: 4px;
                            background-color: alpha(@theme_selected_bg_color, 0.12); }
        .quillmark-text text { padding: 0; }
        check, radio { min-width: 1.05em; min-height: 1.05em; }
        spinner { min-width: 1.2em; min-height: 1.2em; }
        .quillmark-under-check:dir(ltr) { margin-left: calc(1.05em + 10px); }
        .quillmark-under-check:dir(rtl) { margin-right: calc(1.05em + 10px); }
    )";
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(sheet);
    Gtk::StyleContext::add_provider_for_screen(Gdk::Screen::get_default(), provider,
                                               GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

void addClass(Gtk::Widget& widget, const char* name) { widget.get_style_context()->add_class(name); }

void nameFor(Gtk::Widget& widget, const std::string& name, const std::string& description) {
    const auto accessible = widget.get_accessible();
    accessible->set_name(name);
    if (!description.empty()) accessible->set_description(description);
}

} // namespace quillmark
