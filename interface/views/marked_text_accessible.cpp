#include "views/marked_text_accessible.h"

#include "views/marked_text.h"

#include <gtk/gtk-a11y.h>

#include <algorithm>
#include <iterator>

namespace quillmark {

namespace {

AtkAttributeSet* with(AtkAttributeSet* attributes, AtkTextAttribute name, const char* value) {
    auto* attribute = g_new(AtkAttribute, 1); // whoever asked frees it
    *attribute = {g_strdup(atk_text_attribute_get_name(name)), g_strdup(value)};
    return g_slist_prepend(attributes, attribute);
}

// Those of the letter at `offset`, and the letters around that have the same ones.
AtkAttributeSet* runAttributes(AtkText* accessible, int offset, int* start, int* end) {
    if (offset < 0) offset = atk_text_get_caret_offset(accessible); // ATK's -1
    const auto* parent =
        static_cast<AtkTextIface*>(g_type_interface_peek_parent(ATK_TEXT_GET_IFACE(accessible)));
    auto* attributes = parent->get_run_attributes(accessible, offset, start, end);
    auto* widget = gtk_accessible_get_widget(GTK_ACCESSIBLE(accessible));
    const auto* text = widget != nullptr ? dynamic_cast<MarkedText*>(Glib::wrap(widget)) : nullptr;
    if (text == nullptr || offset < 0) return attributes;

    const auto place = static_cast<std::size_t>(offset);
    const auto& marks = text->marks();
    const auto mark = std::upper_bound(marks.begin(), marks.end(), place,
                                       [](std::size_t at, const Span& span) { return at < span.end; });
    const bool marked = mark != marks.end() && mark->start <= place;
    if (mark != marks.begin()) *start = std::max(*start, static_cast<int>(std::prev(mark)->end));
    if (mark != marks.end()) *end = std::min(*end, static_cast<int>(marked ? mark->end : mark->start));
    if (!marked) return attributes;
    *start = std::max(*start, static_cast<int>(mark->start));
    return text->kind() == MarkedText::Mark::removed ? with(attributes, ATK_TEXT_ATTR_STRIKETHROUGH, "true")
                                                     : with(attributes, ATK_TEXT_ATTR_UNDERLINE, "single");
}

} // namespace

GType markedTextAccessibleType() {
    static const GType type = [] {
        GTypeQuery parent{};
        g_type_query(GTK_TYPE_TEXT_VIEW_ACCESSIBLE, &parent);
        const auto made = g_type_register_static_simple(GTK_TYPE_TEXT_VIEW_ACCESSIBLE,
                                                        "QuillmarkMarkedTextAccessible", parent.class_size,
                                                        nullptr, parent.instance_size, nullptr, GTypeFlags{});
        const auto initialize = [](gpointer interface, gpointer) {
            static_cast<AtkTextIface*>(interface)->get_run_attributes = runAttributes;
        };
        const GInterfaceInfo text{initialize, nullptr, nullptr};
        g_type_add_interface_static(made, ATK_TYPE_TEXT, &text);
        return made;
    }();
    return type;
}

} // namespace quillmark
