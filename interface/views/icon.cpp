#include "views/icon.h"

#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <cmath>

namespace quillmark {

namespace {

// Icons are drawn for 16 pixels, beside the usual letters of ten points at 96 dots per inch.
constexpr double drawnSize = 16, drawnFont = 10 * 96.0 / 72;

} // namespace

Icon::Icon() {
    followFont();
    signal_style_updated().connect([this] { followFont(); });
}

Icon::Icon(const std::string& name) : Icon() { set(name); }

void Icon::set(const std::string& name) { set_from_icon_name(name, Gtk::ICON_SIZE_BUTTON); }

void Icon::followFont() {
    const auto font = get_style_context()->get_font(get_state_flags()); // in pixels
    const double size = drawnSize * font.get_size() / PANGO_SCALE / drawnFont;
    set_pixel_size(static_cast<int>(std::lround(std::max(size, drawnSize))));
}

} // namespace quillmark
