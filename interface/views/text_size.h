// How much room the letters of a widget take, in pixels.
#pragma once

#include <gtkmm/widget.h>
#include <pangomm/context.h>
#include <pangomm/fontmetrics.h>

namespace quillmark {

struct TextSize {
    double character; // width of a usual one
    int line;         // height
};

inline TextSize textSize(Gtk::Widget& widget) {
    const auto context = widget.get_pango_context();
    const auto metrics = context->get_metrics(context->get_font_description());
    return {metrics.get_approximate_char_width() / static_cast<double>(Pango::SCALE),
            (metrics.get_ascent() + metrics.get_descent()) / Pango::SCALE};
}

} // namespace quillmark
