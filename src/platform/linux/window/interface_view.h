#pragma once

#include <gtkmm/eventbox.h>
#include <gtkmm/socket.h>

namespace platform {

// The place in the window where the interface's view is embedded (XEMBED), an empty area while there is
// none. Views may come and go, also by being killed.
class InterfaceView : public Gtk::EventBox {
public:
    InterfaceView();

    // The X window to embed in. The view must be in a window already.
    unsigned long embeddingWindow() const;

    // Whether a view is there, has the keyboard, and gets its keys from here (XEMBED).
    bool takesKeys() const;

    // Gives the view that takes the keys one more, as if it had been pressed and released.
    void typeKey(guint key, GdkModifierType modifiers);

private:
    Gtk::Socket socket_;
};

} // namespace platform
