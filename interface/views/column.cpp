#include "views/column.h"

#include <pangomm/context.h>
#include <pangomm/fontmetrics.h>

#include <algorithm>

namespace quillmark {

void Column::on_size_allocate(Gtk::Allocation& allocation) {
    constexpr int longestLine = 90; // characters
    const auto metrics = get_pango_context()->get_metrics(get_pango_context()->get_font_description());
    const int width = longestLine * metrics.get_approximate_char_width() / Pango::SCALE;
    auto narrowed = allocation;
    narrowed.set_width(std::min(width, allocation.get_width()));
    if (get_direction() == Gtk::TEXT_DIR_RTL)
        narrowed.set_x(allocation.get_x() + allocation.get_width() - narrowed.get_width());
    Gtk::Box::on_size_allocate(narrowed);
}

} // namespace quillmark
