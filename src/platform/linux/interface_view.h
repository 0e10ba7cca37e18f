#pragma once

#include <gtkmm/eventbox.h>
#include <gtkmm/socket.h>

namespace platform {

// The place in the window where the interface's view is embedded (XEMBED), a calm empty area while there is
// none. Views may come and go, also by being killed.
class InterfaceView : public Gtk::EventBox {
public:
    InterfaceView();

    // The X window to embed in. The view must be in a window already.
    unsigned long embeddingWindow() const;

private:
    Gtk::Socket socket_;
};

} // namespace platform
