#pragma once

#include "platform/geometry.h"
#include "platform/linux/window/frame_store.h"

#include <gtkmm/headerbar.h>
#include <gtkmm/window.h>
#include <sigc++/connection.h>

#include <memory>
#include <optional>
#include <string_view>

namespace platform {

// The place and size of the host's window as the person sees it: the header bar, everything below it, and the
// border that GTK draws where no compositing manager draws a shadow. Main thread only.
//
// GTK itself counts differently: its sizes are without header bar and border, its positions are those of the
// header bar, and both stay what they were until the window manager has answered the last request.
class WindowFrame {
public:
    // All must outlive this object. `column` is what the window has below the header bar.
    WindowFrame(Gtk::Window& window, Gtk::HeaderBar& header, Gtk::Widget& column);
    ~WindowFrame();
    WindowFrame(const WindowFrame&) = delete;
    WindowFrame& operator=(const WindowFrame&) = delete;

    // What was asked for last; what the window manager has made of it once it has answered.
    Rect current() const;

    // Never smaller than the minimum.
    void set(const Rect& frame);
    // The upper left corner stays where it is.
    void setContentSize(Size size);
    void setMinSize(Size size);

    // The menu bar at the top of the content, which does not count as content. Must outlive this object.
    void setMenuBar(Gtk::Widget& bar);

    // To be called when the bars may have become higher or lower: what is below them keeps its size.
    void fitBars();

    // Keeps the frame under this name from now on, and takes the one that was kept before.
    void keepAs(std::string_view name);

    // Around a time off the screen, from which the window manager would bring it back to another place.
    void rememberWhileAway();
    void restore();

private:
    // Natural heights.
    struct Bars {
        int header = 0;
        int menu = 0;
        bool operator==(const Bars&) const = default;
    };

    Bars measuredBars() const;
    void watch(Gtk::Widget& bar);
    bool isFree() const;
    bool hasBars() const;
    int border() const;
    Rect shown() const;
    void request(const Rect& frame);
    void applyMinSize();
    void placed();
    void configured();
    void expectAnswer();
    void refit();
    void saveSoon();
    void save();

    Gtk::Window& window_;
    Gtk::HeaderBar& header_;
    Gtk::Widget& column_;
    Gtk::Widget* menuBar_ = nullptr;
    Bars bars_;
    Size minSize_;
    std::optional<Size> content_; // when the frame was last given as a size of the content
    std::optional<Rect> wanted_;  // asked for, and not yet confirmed by the window manager
    bool isPlaced_ = false;       // the window manager has shown it
    std::optional<WindowFrameStore> store_;
    bool saveQueued_ = false;
    sigc::connection monitorsChanged_;
    std::shared_ptr<char> life_ = std::make_shared<char>();
};

} // namespace platform
