#pragma once

namespace Gtk {
class Window;
}

namespace platform {

// The program's standard panel with its name, version, licence and site, in front of `owner` (null:
// anywhere). Does not wait for the person to close it.
void showAboutPanel(Gtk::Window* owner);

} // namespace platform
