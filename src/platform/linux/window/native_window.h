#pragma once

#include "platform/linux/window/frame.h"
#include "platform/linux/window/interface_view.h"
#include "platform/linux/window/presence.h"
#include "platform/linux/window/wanted_state.h"
#include "platform/view_controller.h"
#include "platform/window.h"

#include <gtkmm/box.h>
#include <gtkmm/gesturedrag.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/label.h>
#include <gtkmm/menubar.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/viewport.h>
#include <gtkmm/window.h>

#include <memory>

namespace platform {

// The toolkit's side of a window: a header bar, under it the menu bar, under that the interface's view.
class Window::Native {
public:
    explicit Native(std::uint64_t styleMask);
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    void setMenuBar(Gtk::MenuBar& bar);

    void setTitleVisible(bool visible);
    void setBarFlat(bool flat);
    void setStyleMask(std::uint64_t styleMask);
    // With the full screen that is wanted, even if the window manager has not given it yet.
    std::uint64_t styleMask() const;

    bool isVisible() const { return window.is_visible(); }
    bool isZoomed() const { return hasState(Gdk::WINDOW_STATE_MAXIMIZED); }

    Gtk::Window window;
    Gtk::HeaderBar header;
    InterfaceView view;
    std::unique_ptr<flutter::ViewController> controller;
    WindowDelegate* delegate = nullptr;
    bool movableByBackground = false;

private:
    void assemble();
    void closeMenus();
    void close();
    void dragged(double right, double down);
    void stateChanged(const GdkEventWindowState& event);
    bool hasState(Gdk::WindowState state) const;

    Gtk::Box column_{Gtk::ORIENTATION_VERTICAL};
    // Around the menu bar: it may be wider than the window, which is as narrow as it was asked to be at any
    // font.
    Gtk::ScrolledWindow bar_;
    Gtk::Viewport wholeBar_{{}, {}};
    Glib::RefPtr<Gtk::GestureDrag> drag_ = Gtk::GestureDrag::create(window);
    Gtk::Label noTitle_; // stands where the title would
    std::uint64_t styleMask_;
    std::shared_ptr<char> life_ = std::make_shared<char>();

public:
    // Declared after what they act on.
    WindowFrame frame{window, header, column_};
    Presence presence{window, frame};

private:
    WantedState fullScreen_;
};

} // namespace platform
