#include "views/hot_key_name.h"

#include "settings/hot_key.h"
#include "settings/key_position.h"
#include "views/shortcuts.h"

#include <gdk/gdk.h>

namespace quillmark {

std::string hotKeyName(const HotKey& hotKey) {
    guint symbol = GDK_KEY_VoidSymbol;
    if (const auto position = positionOf(hotKey.keyCode))
        gdk_keymap_translate_keyboard_state(gdk_keymap_get_for_display(gdk_display_get_default()),
                                            *position + firstXKeyCode, GdkModifierType{}, 0, &symbol, nullptr,
                                            nullptr, nullptr);
    return nameOf(hotKey, symbolName(symbol));
}

} // namespace quillmark
