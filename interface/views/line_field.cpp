#include "views/line_field.h"

#include <algorithm>

namespace quillmark {

LineField::LineField() : Scroller(Holds::text) {
    set_policy(Gtk::POLICY_EXTERNAL, Gtk::POLICY_NEVER);
    view_.set_wrap_mode(Gtk::WRAP_NONE);
    view_.signal_key_press_event().connect([this](GdkEventKey* event) { return onKey(event); }, false);
    add(view_);
}

std::string LineField::text() const {
    std::string text = view_.get_buffer()->get_text();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

void LineField::setText(const std::string& text) { view_.get_buffer()->set_text(text); }

void LineField::begin() {
    const auto buffer = view_.get_buffer();
    buffer->select_range(buffer->begin(), buffer->end());
    view_.grab_focus();
}

// An input method may have a use for the Enter key.
bool LineField::onKey(GdkEventKey* event) {
    if (event->keyval != GDK_KEY_Return && event->keyval != GDK_KEY_KP_Enter) return false;
    if ((event->state & (GDK_CONTROL_MASK | GDK_MOD1_MASK)) != 0) return false;
    if (!view_.im_context_filter_keypress(event)) entered.emit();
    return true;
}

} // namespace quillmark
