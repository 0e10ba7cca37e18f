#include "platform/linux/window/native_window.h"

#include "platform/application.h"
#include "platform/linux/window/look.h"
#include "platform/linux/window/screen.h"
#include "platform/linux/window/screen_coordinates.h"
#include "platform/linux/x11/windows/host_window.h"
#include "platform/main_queue.h"

#include <utility>

namespace platform {
Window::Native::Native(std::uint64_t styleMask) : styleMask_(styleMask) {
    installWindowLook();
    header.set_show_close_button(true);
    header.get_style_context()->add_class(barClass);
    header.show();
    column_.pack_end(view, Gtk::PACK_EXPAND_WIDGET);
    column_.show();
    window.set_titlebar(header);
    window.add(column_);
    window.get_style_context()->add_class("quillmark-window");
    window.set_resizable((styleMask & WindowStyleMaskResizable) != 0);
    window.add_events(Gdk::PROPERTY_CHANGE_MASK);
    gtk_widget_realize(GTK_WIDGET(window.gobj())); // so that its measures are known before it is shown

    window.signal_delete_event().connect([this](GdkEventAny*) { return close(), true; });
    drag_->set_button(GDK_BUTTON_PRIMARY);
    drag_->signal_drag_update().connect([this](double right, double down) { dragged(right, down); });
    window.signal_window_state_event().connect(
        [this](GdkEventWindowState* event) { return stateChanged(*event), false; });
    window.signal_map_event().connect([this](GdkEventAny*) { return placed(), false; });
    window.signal_configure_event().connect([this](GdkEventConfigure*) { return configured(), false; },
                                            false);
}

Window::Native::~Native() {
    if (saveQueued_) saveFrame();
}

void Window::Native::setMenuBar(Gtk::MenuBar& bar) {
    menuBar_ = &bar;
    column_.pack_start(bar, Gtk::PACK_SHRINK);
}

void Window::Native::setTitleVisible(bool visible) {
    gtk_header_bar_set_custom_title(header.gobj(), visible ? nullptr : GTK_WIDGET(noTitle_.gobj()));
}

// The window itself never closes: the delegate is asked, from the main queue as any entry into the host.
void Window::Native::close() {
    MainQueue::async([this, life = std::weak_ptr(life_)] {
        if (life.expired() || (delegate != nullptr && !delegate->windowShouldClose())) return;
        orderOut();
        auto& application = Application::sharedApplication();
        auto* asked = application.delegate();
        if (asked != nullptr && asked->applicationShouldTerminateAfterLastWindowClosed())
            application.terminate();
    });
}

// Not at the press: xfwm4, asked to move a window whose button is up again by then, goes on moving it.
void Window::Native::dragged(double right, double down) {
    double x = 0, y = 0;
    if (!movableByBackground || !drag_->get_start_point(x, y) ||
        !window.drag_check_threshold(0, 0, whole(right), whole(down)))
        return;
    int onScreenX = 0, onScreenY = 0;
    window.get_window()->get_root_coords(whole(x), whole(y), onScreenX, onScreenY);
    window.begin_move_drag(GDK_BUTTON_PRIMARY, onScreenX, onScreenY, gtk_get_current_event_time());
    drag_->reset(); // the window manager has the pointer now, and its release too
}

void Window::Native::stateChanged(const GdkEventWindowState& event) {
    state_ = event.new_window_state;
    if (!isFree()) wanted_.reset();
    if ((event.changed_mask & GDK_WINDOW_STATE_FULLSCREEN) == 0) return;
    MainQueue::async([this, entered = isFullScreen(), life = std::weak_ptr(life_)] {
        if (life.expired() || delegate == nullptr) return;
        entered ? delegate->windowDidEnterFullScreen() : delegate->windowDidExitFullScreen();
    });
}

// Until the window manager shows it, a window wanders: openbox puts it into its frame first and that to its
// place then.
void Window::Native::placed() {
    isPlaced_ = true;
    configured();
    expectAnswer();
}

void Window::Native::configured() {
    if (!isPlaced_) return;
    if (wanted_ == shownFrame()) wanted_.reset();
    if (isFree()) saveFrameSoon();
}

void Window::Native::setStyleMask(std::uint64_t styleMask) {
    const bool fullScreen = (styleMask & WindowStyleMaskFullScreen) != 0;
    styleMask_ = styleMask & ~WindowStyleMaskFullScreen;
    window.set_resizable((styleMask & WindowStyleMaskResizable) != 0);
    if (fullScreen != isFullScreen()) fullScreen ? window.fullscreen() : window.unfullscreen();
}

std::uint64_t Window::Native::styleMask() const {
    return styleMask_ | (isFullScreen() ? WindowStyleMaskFullScreen : 0);
}

void Window::Native::present() {
    // Once is enough: openbox takes a wish that comes while it fulfils the one before for one that it cannot
    // grant, makes the window flash, and crashes when a window goes while it flashes.
    if (std::exchange(presented_, true)) return;
    MainQueue::async([this, life = std::weak_ptr(life_)] {
        if (!life.expired()) presented_ = false;
    });
    if (!window.get_mapped() && wanted_) setFrame(*wanted_); // else the window manager chooses a new place
    const auto time = x11::prepareToPresent(window.get_window()->gobj(), movesToActiveSpace);
    window.show();
    window.present(time);
    window.get_display()->flush();
}

void Window::Native::orderOut() {
    if (window.get_mapped() && isFree()) wanted_ = frame();
    if (saveQueued_) saveFrame();
    isPlaced_ = presented_ = false;
    window.hide();
    window.get_display()->flush(); // the main thread may sleep next, until the focus is back where it was
}

} // namespace platform
