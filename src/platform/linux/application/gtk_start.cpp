#include "platform/linux/application/gtk_start.h"

#include "platform/accessibility.h"
#include "platform/linux/application/own_icon.h"
#include "platform/linux/x11/base/errors.h"

#include <gtk/gtk.h>
#include <gtkmm/main.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace platform {
namespace {

// A variable of the environment while GTK starts. Programs that the host starts later must not inherit it.
class TemporaryVariable {
public:
    TemporaryVariable(const char* name, const char* value) : name_(name) {
        if (const char* former = std::getenv(name)) former_ = former;
        setenv(name, value, 1);
    }
    ~TemporaryVariable() {
        if (former_)
            setenv(name_, former_->c_str(), 1);
        else
            unsetenv(name_);
    }
    TemporaryVariable(const TemporaryVariable&) = delete;
    TemporaryVariable& operator=(const TemporaryVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> former_;
};

} // namespace

bool startGtk() {
    // GTK shows the host's own window on the accessibility bus, too. A bus that hangs would hold it up for 25
    // s, and one that is missing makes it print a warning.
    std::optional<TemporaryVariable> noBridge;
    if (!AXIsProcessTrustedWithOptions({})) noBridge.emplace("NO_AT_BRIDGE", "1");
    // GTK loads the graphics driver for a window that never draws with it: 50 MB where LLVM comes along.
    const TemporaryVariable noDriver("GDK_GL", "disable");
    g_set_prgname("quillmark-host");
    gdk_set_allowed_backends("x11");
    if (gtk_init_check(nullptr, nullptr) == FALSE) return false; // its own options are not ours
    Gtk::Main::init_gtkmm_internals();
    useOwnIcon();
    x11::endCleanlyWhenDisplayIsLost();
    return true;
}

} // namespace platform
