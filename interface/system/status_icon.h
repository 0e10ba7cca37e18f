// The icon among those of the desktop, with a menu (StatusNotifierItem). Main thread only.
#pragma once

#include <gtkmm/menu.h>

#include <functional>
#include <memory>

namespace quillmark {

class StatusIcon {
public:
    struct Actions {
        std::function<void()> show;
        std::function<void()> pause; // or goes on, where the hot key is paused
        std::function<void()> settings;
        std::function<void()> quit;
    };

    explicit StatusIcon(Actions actions);
    ~StatusIcon();
    StatusIcon(const StatusIcon&) = delete;
    StatusIcon& operator=(const StatusIcon&) = delete;

    // There is something to look at in the window.
    void callAttention(bool wanted);

private:
    struct Indicator;

    Actions actions_;
    Gtk::Menu menu_;
    std::unique_ptr<Indicator> indicator_;
};

} // namespace quillmark
