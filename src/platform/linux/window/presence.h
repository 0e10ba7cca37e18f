#pragma once

#include "platform/linux/window/frame.h"
#include "platform/linux/window/wanted_state.h"

#include <gtkmm/window.h>

namespace platform {

// Whether the window is on the screen and in front, minimised, or off the screen and in no list of windows.
// The last call holds, however quickly calls follow each other. Main thread only.
class Presence {
public:
    // Both must outlive this object.
    Presence(Gtk::Window& window, WindowFrame& frame);

    // Brings the window to the front with the keyboard, from wherever it is.
    void show();

    // Minimises it; takes it off the screen where the window manager minimises nothing (i3, or none runs).
    void minimise();

    // Takes it off the screen at once, without asking the window manager.
    void takeAway();

    // Whether show() brings it to the workspace that the person is on.
    bool movesToActiveSpace = false;

private:
    void ask(bool shown);
    void present();
    bool is(bool shown) const;
    void refused(bool shown);

    Gtk::Window& window_;
    WindowFrame& frame_;
    int refusals_ = 0; // in a row
    WantedState shown_;
};

} // namespace platform
