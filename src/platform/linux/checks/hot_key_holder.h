#pragma once

#include <optional>
#include <string>

namespace platform {

// The X server does not say who holds a key. What can be known is in the settings of the desktop that runs.
// `keys` is a combination such as "Alt+Shift+Space".

// Who has it by those settings, in a few words; absent when nobody is named there. Needs an X server.
std::optional<std::string> hotKeyHolder(const std::string& keys);

// The option of the keyboard's layout that switches layouts with modifiers of the combination alone, such as
// "grp:alt_shift_toggle"; absent when there is none.
std::optional<std::string> layoutSwitchWithin(const std::string& keys);

} // namespace platform
