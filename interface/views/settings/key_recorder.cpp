#include "views/settings/key_recorder.h"

#include "language/settings_phrases.h"
#include "views/look.h"

#include <gdk/gdk.h>
#include <gtkmm/window.h>

#include <utility>

namespace quillmark {

KeyRecorder::KeyRecorder(Recorded recorded) : recorded_(std::move(recorded)) {}

KeyRecorder::~KeyRecorder() { stop(); }

void KeyRecorder::show(const std::string& name, const std::string& spoken) {
    name_ = name;
    spoken_ = spoken;
    set_label(name);
    nameFor(*this, spoken);
}

// The keyboard is grabbed: else the window manager or the host would act on the keys that it holds.
void KeyRecorder::on_clicked() {
    auto* window = dynamic_cast<Gtk::Window*>(get_toplevel());
    if (recording_ || window == nullptr) return;
    recording_ = true;
    set_label(say(phrases::pressKeys));
    nameFor(*this, say(phrases::pressKeys));
    auto* seat = gdk_display_get_default_seat(get_display()->gobj());
    gdk_seat_grab(seat, window->get_window()->gobj(), GDK_SEAT_CAPABILITY_KEYBOARD, FALSE, nullptr, nullptr,
                  nullptr, nullptr);
    keys_ =
        window->signal_key_press_event().connect([this](GdkEventKey* event) { return take(event); }, false);
}

bool KeyRecorder::on_focus_out_event(GdkEventFocus* event) {
    // The grab takes the focus away for a moment, too.
    if (!has_focus()) stop();
    return Gtk::Button::on_focus_out_event(event);
}

bool KeyRecorder::take(GdkEventKey* event) {
    if (event->is_modifier) return true;
    constexpr unsigned modifiers = GDK_CONTROL_MASK | GDK_MOD1_MASK | GDK_SHIFT_MASK | GDK_SUPER_MASK;
    const bool leave = event->keyval == GDK_KEY_Escape && (event->state & modifiers) == 0;
    const auto pressed = *event;
    stop();
    if (!leave) recorded_(pressed);
    return true;
}

void KeyRecorder::stop() {
    if (!std::exchange(recording_, false)) return;
    keys_.disconnect();
    gdk_seat_ungrab(gdk_display_get_default_seat(get_display()->gobj()));
    set_label(name_);
    nameFor(*this, spoken_);
}

} // namespace quillmark
