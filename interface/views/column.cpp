#include "views/column.h"

#include "views/text_size.h"

#include <algorithm>

namespace quillmark {

void Column::on_size_allocate(Gtk::Allocation& allocation) {
    constexpr int longestLine = 90; // characters
    const auto width = static_cast<int>(longestLine * textSize(*this).character);
    auto narrowed = allocation;
    narrowed.set_width(std::min(width, allocation.get_width()));
    if (get_direction() == Gtk::TEXT_DIR_RTL)
        narrowed.set_x(allocation.get_x() + allocation.get_width() - narrowed.get_width());
    Gtk::Box::on_size_allocate(narrowed);
}

} // namespace quillmark
