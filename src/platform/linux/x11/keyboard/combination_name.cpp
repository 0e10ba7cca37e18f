#include "platform/linux/x11/keyboard/combination_name.h"

#include "platform/hot_key.h"
#include "platform/linux/x11/keyboard/keyboards.h"
#include "platform/linux/x11/keyboard/keymap.h"

#include <array>
#include <utility>

namespace platform::x11 {

std::string combinationName(KeyCode key, std::uint32_t hotKeyModifiers) {
    constexpr std::array names{std::pair{cmdKey, "Super+"}, std::pair{controlKey, "Ctrl+"},
                               std::pair{optionKey, "Alt+"}, std::pair{shiftKey, "Shift+"}};
    std::string text;
    for (const auto& [bit, name] : names)
        if ((hotKeyModifiers & bit) != 0) text += name;
    const auto map = Keymap::read(coreKeyboard);
    const char* name = map ? XKeysymToString(map->symbol(key, 0)) : nullptr;
    if (name == nullptr) return text + "key " + std::to_string(key);
    const auto start = text.size();
    text += name;
    if (text[start] >= 'a' && text[start] <= 'z') text[start] = static_cast<char>(text[start] - 'a' + 'A');
    return text;
}

} // namespace platform::x11
