#include "platform/linux/x11/windows/terminals.h"

#include "platform/linux/x11/windows/window_class.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform::x11 {
namespace {

// Window classes in lower case.
constexpr std::array<std::string_view, 35> classes{
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
    "kitty",
    "konsole",
    "kgx",
    "lxterminal",
    "mate-terminal",
    "mlterm",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "org.wezfurlong.wezterm",
    "pantheon-terminal",
    "qterminal",
    "rxvt",
    "sakura",
    "st",
    "st-256color",
    "terminator",
    "terminology",
    "tilix",
    "urxvt",
    "uxterm",
    "xfce4-terminal",
    "xterm",
};

} // namespace

bool takesNoCopyKeys(WindowId window) {
    const auto names = windowClass(window);
    return names && (std::ranges::find(classes, lowerCase(names->name)) != classes.end() ||
                     std::ranges::find(classes, lowerCase(names->instance)) != classes.end());
}

} // namespace platform::x11
