#include "platform/linux/x11/windows/terminals.h"

#include "platform/linux/x11/windows/window_class.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform::x11 {
namespace {

// Window classes in lower case.
constexpr std::array<std::string_view, 41> classes{
    "alacritty",
    "aterm",
    "cool-retro-term",
    "deepin-terminal",
    "emacs",
    "eterm",
    "foot",
    "ghostty",
    "gnome-terminal",
    "gnome-terminal-server",
    "guake",
    "gvim",
    "hyper",
    "kgx",
    "kitty",
    "konsole",
    "lxterminal",
    "mate-terminal",
    "mlterm",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "org.wezfurlong.wezterm",
    "pantheon-terminal",
    "pterm",
    "putty",
    "qterminal",
    "roxterm",
    "rxvt",
    "sakura",
    "st",
    "st-256color",
    "terminator",
    "terminology",
    "tilda",
    "tilix",
    "urxvt",
    "uxterm",
    "xedit",
    "xfce4-terminal",
    "xterm",
    "yakuake",
};

} // namespace

bool takesNoCopyKeys(WindowId window) {
    const auto names = windowClass(window);
    return names && (std::ranges::find(classes, lowerCase(names->name)) != classes.end() ||
                     std::ranges::find(classes, lowerCase(names->instance)) != classes.end());
}

} // namespace platform::x11
