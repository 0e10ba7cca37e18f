#include "views/marked_text.h"

#include "views/marked_text_accessible.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillmark {

namespace {

void drawLayer(GtkTextView* view, GtkTextViewLayer layer, cairo_t* cairo) {
    auto* text = dynamic_cast<MarkedText*>(Glib::wrap(view));
    if (text == nullptr) return;
    Cairo::Context context(cairo);
    if (layer == GTK_TEXT_VIEW_LAYER_BELOW_TEXT) text->drawBelowText(context);
    if (layer == GTK_TEXT_VIEW_LAYER_ABOVE_TEXT) text->drawAboveText(context);
}

} // namespace

MarkedText::MarkedText(Mark kind) : Glib::ObjectBase("QuillmarkMarkedText"), kind_(kind), places_(*this) {
    // gtkmm has neither.
    GTK_TEXT_VIEW_GET_CLASS(gobj())->draw_layer = drawLayer;
    gtk_widget_class_set_accessible_type(GTK_WIDGET_GET_CLASS(gobj()), markedTextAccessibleType());
    const auto composed = [](GtkTextView* view, char* letters, gpointer) {
        if (auto* text = dynamic_cast<MarkedText*>(Glib::wrap(view)))
            text->places_.setComposing(*letters != '\0');
    };
    g_signal_connect(gobj(), "preedit-changed", G_CALLBACK(+composed), nullptr);
    signal_style_updated().connect([this] { places_.forget(); });
    signal_size_allocate().connect([this](const Gtk::Allocation& place) {
        if (std::exchange(width_, place.get_width()) != width_) places_.forget();
    });
}

void MarkedText::setMarks(std::vector<Span> marks) {
    std::vector<Span> changed;
    std::ranges::set_symmetric_difference(marks_, marks, std::back_inserter(changed));
    marks_ = std::move(marks);
    if (changed.empty()) return;
    redrawLines(changed.front().start, std::ranges::max(changed, {}, &Span::end).end);
}

// No more than those: while a text grows they are the last ones only, and mostly out of sight.
void MarkedText::redrawLines(std::size_t start, std::size_t end) {
    int top = 0, last = 0, height = 0, x = 0, y = 0;
    get_line_yrange(get_buffer()->get_iter_at_offset(static_cast<int>(start)), top, height);
    get_line_yrange(get_buffer()->get_iter_at_offset(static_cast<int>(end)), last, height);
    buffer_to_window_coords(Gtk::TEXT_WINDOW_WIDGET, 0, top, x, y);
    queue_draw_area(0, y, get_allocated_width(), last + height - top);
}

void MarkedText::drawBelowText(Cairo::Context& context) {
    double left = 0, top = 0, right = 0, bottom = 0;
    context.get_clip_extents(left, top, right, bottom);
    drawn_ = places_.in({static_cast<int>(top), static_cast<int>(bottom)}, marks_);

    // Seen on a light and on a dark background.
    if (kind_ == Mark::removed)
        context.set_source_rgba(0.85, 0.2, 0.25, 0.22);
    else
        context.set_source_rgba(0.15, 0.65, 0.25, 0.22);
    for (const auto& block : drawn_)
        context.rectangle(block.get_x(), block.get_y(), block.get_width(), block.get_height());
    context.fill();
}

void MarkedText::drawAboveText(Cairo::Context& context) {
    const auto ink = get_style_context()->get_color(get_state_flags());
    context.set_source_rgba(ink.get_red(), ink.get_green(), ink.get_blue(), ink.get_alpha());
    for (const auto& block : drawn_) {
        // Through the small letters, or clear of the tails of letters.
        const int line = kind_ == Mark::removed ? block.get_height() * 11 / 20 : block.get_height() - 1;
        context.rectangle(block.get_x(), block.get_y() + line, block.get_width(), 1);
    }
    context.fill();
}

} // namespace quillmark
