#pragma once

#include <gtkmm/socket.h>

namespace platform {

// Puts the elements of a view that is embedded in `socket` inside the host's own on the accessibility bus, so
// that screen readers find them in the window. `socket` must outlive all its views.
void showElementsOfViewsIn(Gtk::Socket& socket);

} // namespace platform
