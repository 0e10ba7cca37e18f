#include "views/icon.h"

#include "views/text_size.h"

#include <algorithm>

namespace quillmark {

Icon::Icon() {
    followFont();
    signal_style_updated().connect([this] { followFont(); });
}

Icon::Icon(const std::string& name) : Icon() { set(name); }

void Icon::set(const std::string& name) { set_from_icon_name(name, Gtk::ICON_SIZE_BUTTON); }

// Even: icons are drawn for 16 pixels, and have lines two pixels wide.
void Icon::followFont() {
    constexpr int drawnSize = 16;
    set_pixel_size(std::max(drawnSize, textSize(*this).line / 2 * 2));
}

} // namespace quillmark
