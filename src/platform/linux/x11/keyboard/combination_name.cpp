#include "platform/linux/x11/keyboard/combination_name.h"

#include "platform/hot_key.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/keymap.h"

#include <array>
#include <utility>

namespace platform::x11 {

std::string combinationName(KeyCode key, std::uint32_t hotKeyModifiers) {
    constexpr std::array names{std::pair{controlKey, "Control+"}, std::pair{optionKey, "Alt+"},
                               std::pair{shiftKey, "Shift+"}, std::pair{cmdKey, "Super+"}};
    std::string text;
    for (const auto& [bit, name] : names)
        if ((hotKeyModifiers & bit) != 0) text += name;
    const auto map = Keymap::read(coreKeyboard);
    const char* name = map ? XKeysymToString(map->symbol(key, 0)) : nullptr;
    return text + (name != nullptr ? name : "key " + std::to_string(key));
}

} // namespace platform::x11
