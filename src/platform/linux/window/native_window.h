#pragma once

#include "platform/linux/window/frame_store.h"
#include "platform/linux/window/interface_view.h"
#include "platform/view_controller.h"
#include "platform/window.h"

#include <gtkmm/accelgroup.h>
#include <gtkmm/box.h>
#include <gtkmm/gesturedrag.h>
#include <gtkmm/headerbar.h>
#include <gtkmm/label.h>
#include <gtkmm/menubar.h>
#include <gtkmm/window.h>

#include <memory>
#include <optional>

namespace platform {

// The toolkit's side of a window: a header bar drawn by ourselves, under it the menu bar, under that the
// interface's view. Frames here are what the person sees: header bar and all below it, without shadow and
// resizing border.
class Window::Native {
public:
    explicit Native(std::uint64_t styleMask);
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    void setMenuBar(Gtk::MenuBar& bar);

    void setTitleVisible(bool visible);
    void setContentSize(Size size);
    void setMinSize(Size size);
    void setStyleMask(std::uint64_t styleMask);
    std::uint64_t styleMask() const;

    Rect frame() const;
    void setFrame(const Rect& frame);
    void keepFrameAs(std::string_view name);

    bool isVisible() const { return window.is_visible(); }
    bool isZoomed() const { return (state_ & GDK_WINDOW_STATE_MAXIMIZED) != 0; }

    void present();
    void orderOut();

    Gtk::Window window;
    Gtk::HeaderBar header;
    InterfaceView view;
    std::unique_ptr<flutter::ViewController> controller;
    WindowDelegate* delegate = nullptr;
    bool movableByBackground = false;
    bool movesToActiveSpace = false; // to the workspace the person is on, when presented

private:
    void close();
    void dragged(double right, double down);
    void stateChanged(const GdkEventWindowState& event);
    void placed();
    void configured();

    bool isFullScreen() const { return (state_ & GDK_WINDOW_STATE_FULLSCREEN) != 0; }
    bool isFree() const;
    int headerHeight() const;
    Rect shownFrame() const;
    void expectAnswer();
    void saveFrameSoon();
    void saveFrame();

    Gtk::Box column_{Gtk::ORIENTATION_VERTICAL};
    Gtk::MenuBar* menuBar_ = nullptr;
    Glib::RefPtr<Gtk::GestureDrag> drag_ = Gtk::GestureDrag::create(window);
    Gtk::Label noTitle_; // stands where the title would
    std::uint64_t styleMask_;
    int state_ = 0;
    bool isPlaced_ = false;  // the window manager has shown it
    bool presented_ = false; // in this turn of the main loop
    Size minSize_;
    std::optional<Rect> wanted_; // asked for, and not yet confirmed by the window manager
    std::optional<WindowFrameStore> store_;
    bool saveQueued_ = false;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace platform
