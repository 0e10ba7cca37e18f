#include "platform/linux/window/native_window.h"

#include "platform/application.h"
#include "platform/linux/window/look.h"
#include "platform/linux/window/screen_coordinates.h"
#include "platform/main_queue.h"

namespace platform {

Window::Native::Native(std::uint64_t styleMask)
    : styleMask_(styleMask),
      fullScreen_({[this](bool on) {
                       if (on)
                           window.fullscreen();
                       else
                           window.unfullscreen();
                   },
                   [this](bool on) { return hasState(Gdk::WINDOW_STATE_FULLSCREEN) == on; },
                   {}}) {
    assemble();
    window.signal_delete_event().connect([this](GdkEventAny*) {
        close();
        return true;
    });
    window.signal_window_state_event().connect([this](GdkEventWindowState* event) {
        stateChanged(*event);
        return false;
    });
    drag_->set_button(GDK_BUTTON_PRIMARY);
    drag_->signal_drag_update().connect([this](double right, double down) { dragged(right, down); });
}

Window::Native::~Native() = default;

void Window::Native::assemble() {
    installWindowLook();
    header.set_show_close_button(true);
    header.get_style_context()->add_class(barClass);
    header.show();
    wholeBar_.set_shadow_type(Gtk::SHADOW_NONE);
    bar_.set_policy(Gtk::POLICY_EXTERNAL, Gtk::POLICY_NEVER);
    bar_.set_can_focus(false); // the keyboard is for the view
    bar_.add(wholeBar_);
    column_.pack_start(bar_, Gtk::PACK_SHRINK);
    column_.pack_end(view, Gtk::PACK_EXPAND_WIDGET);
    column_.show();
    window.set_titlebar(header);
    window.add(column_);
    window.get_style_context()->add_class("quillmark-window");
    window.set_resizable((styleMask_ & WindowStyleMaskResizable) != 0);
    window.add_events(Gdk::PROPERTY_CHANGE_MASK);
    gtk_widget_realize(GTK_WIDGET(window.gobj())); // so that its measures are known before it is shown
    frame.fitBars();
}

void Window::Native::setMenuBar(Gtk::MenuBar& bar) {
    wholeBar_.remove();
    wholeBar_.add(bar);
    bar_.show_all();
    frame.setMenuBar(bar_);
}

// GTK leaves a menu open, and the keyboard with it, when its window is minimised.
void Window::Native::closeMenus() {
    if (auto* bar = dynamic_cast<Gtk::MenuBar*>(wholeBar_.get_child())) bar->deactivate();
}

void Window::Native::setTitleVisible(bool visible) {
    gtk_header_bar_set_custom_title(header.gobj(), visible ? nullptr : GTK_WIDGET(noTitle_.gobj()));
    frame.fitBars();
}

void Window::Native::setBarFlat(bool flat) {
    const auto style = header.get_style_context();
    if (flat)
        style->add_class(flatBarClass);
    else
        style->remove_class(flatBarClass);
    frame.fitBars();
}

// The window itself never closes: the delegate is asked, from the main queue as any entry into the host.
void Window::Native::close() {
    MainQueue::async(life_, [this] {
        if (delegate != nullptr && !delegate->windowShouldClose()) return;
        presence.takeAway();
        auto& application = Application::sharedApplication();
        auto* asked = application.delegate();
        if (asked != nullptr && asked->applicationShouldTerminateAfterLastWindowClosed())
            application.terminate();
    });
}

// Not at the press: xfwm4 4.18, asked to move a window when the button is up again already, moves it with the
// pointer until the next click.
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

bool Window::Native::hasState(Gdk::WindowState state) const {
    return (window.get_window()->get_state() & state) == state;
}

void Window::Native::stateChanged(const GdkEventWindowState& event) {
    fullScreen_.check();
    if ((event.changed_mask & event.new_window_state & GDK_WINDOW_STATE_ICONIFIED) != 0) closeMenus();
    if ((event.changed_mask & GDK_WINDOW_STATE_FULLSCREEN) == 0) return;
    const bool entered = (event.new_window_state & GDK_WINDOW_STATE_FULLSCREEN) != 0;
    MainQueue::async(life_, [this, entered] {
        if (delegate == nullptr) return;
        if (entered)
            delegate->windowDidEnterFullScreen();
        else
            delegate->windowDidExitFullScreen();
    });
}

void Window::Native::setStyleMask(std::uint64_t styleMask) {
    const bool fullScreen = (styleMask & WindowStyleMaskFullScreen) != 0;
    const bool changes = fullScreen != ((this->styleMask() & WindowStyleMaskFullScreen) != 0);
    styleMask_ = styleMask & ~WindowStyleMaskFullScreen;
    window.set_resizable((styleMask & WindowStyleMaskResizable) != 0);
    if (changes) fullScreen_.want(fullScreen);
}

std::uint64_t Window::Native::styleMask() const {
    const bool fullScreen = fullScreen_.wanted().value_or(hasState(Gdk::WINDOW_STATE_FULLSCREEN));
    return styleMask_ | (fullScreen ? WindowStyleMaskFullScreen : 0);
}

} // namespace platform
