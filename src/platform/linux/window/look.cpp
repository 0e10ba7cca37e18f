#include "platform/linux/window/look.h"

#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

namespace platform {

void installWindowLook() {
    // Without transitions: GTK 3 keeps a picture of each button for every color that a transition passes
    // through, and never drops one.
    constexpr const char* look = R"(
        .quillmark-bar { min-height: 36px; padding: 0 6px; border: none; }
        .quillmark-bar, .quillmark-bar * { transition: none; }
        .quillmark-flat-bar, .quillmark-flat-bar:backdrop { background: @theme_bg_color; box-shadow: none; }
        .quillmark-window.solid-csd > decoration, .quillmark-window.solid-csd > decoration:backdrop {
            background: @theme_bg_color; border: 1px solid @borders; padding: 4px; box-shadow: none;
        }
        .quillmark-window.solid-csd .csd decoration { /* a menu's, when a compositing manager came after the window */
            background: none; border: none; padding: 0;
            box-shadow: 0 0 0 1px @borders, 0 1px 2px 1px alpha(black, 0.2);
        }
        .quillmark-window menubar { background: @theme_bg_color; border: none; box-shadow: none; }
    )";
    static const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(look);
    Gtk::StyleContext::add_provider_for_screen(Gdk::Screen::get_default(), provider,
                                               GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

} // namespace platform
