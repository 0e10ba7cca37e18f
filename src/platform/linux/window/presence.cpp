#include "platform/linux/window/presence.h"

#include "platform/linux/x11/windows/host_window.h"

namespace platform {

Presence::Presence(Gtk::Window& window, WindowFrame& frame)
    : window_(window), frame_(frame),
      shown_({[this](bool shown) { ask(shown); }, [this](bool shown) { return is(shown); },
              [this](bool shown) { refused(shown); }}) {
    const auto changed = [this] { shown_.check(); };
    window_.signal_map_event().connect([changed](GdkEventAny*) {
        changed();
        return false;
    });
    window_.signal_unmap_event().connect([changed](GdkEventAny*) {
        changed();
        return false;
    });
    window_.signal_window_state_event().connect([changed](GdkEventWindowState*) {
        changed();
        return false;
    });
    window_.property_is_active().signal_changed().connect(changed);
}

void Presence::show() {
    refusals_ = 0;
    shown_.want(true);
}

void Presence::minimise() {
    refusals_ = 0;
    shown_.want(false);
}

void Presence::takeAway() {
    shown_.withdraw();
    frame_.rememberWhileAway();
    window_.hide();
    window_.get_display()->flush(); // the main thread may sleep next, until the focus is back where it was
}

bool Presence::is(bool shown) const {
    const auto state = window_.get_window()->get_state();
    const bool onScreen =
        window_.get_mapped() && (state & Gdk::WINDOW_STATE_ICONIFIED) == Gdk::WindowState(0);
    return shown ? onScreen && window_.is_active() : !onScreen;
}

void Presence::ask(bool shown) {
    if (shown)
        present();
    else if (x11::canMinimise(window_.get_window()->gobj()))
        window_.iconify();
    else
        takeAway();
}

void Presence::present() {
    if (!window_.get_mapped()) frame_.restore();
    const auto time = x11::prepareToPresent(window_.get_window()->gobj(), movesToActiveSpace);
    window_.show();
    window_.deiconify();
    window_.present(time);
    window_.get_display()->flush();
}

// xfwm4 may give the focus to another window right after it has shown this one, and does not when asked once
// more.
void Presence::refused(bool shown) {
    constexpr int mostRequests = 2;
    if (++refusals_ < mostRequests)
        shown_.want(shown);
    else if (!shown)
        takeAway();
}

} // namespace platform
