#include "settings/hot_key.h"

#include "language/settings_phrases.h"

namespace quillmark {

namespace {

bool isIn(int keyCode, auto... codes) { return ((keyCode == codes) || ...); }

bool isFunctionKey(int keyCode) {
    return isIn(keyCode, 122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111);
}

constexpr int tab = 48, space = 49, enter = 36, escape = 53, deleteKey = 117, letterL = 37, letterT = 17;

} // namespace

// Shift alone will not do: Shift and a key is how people write.
std::optional<std::string> refusalOf(const HotKey& hotKey) {
    if (hotKey.command || hotKey.option || hotKey.control) return std::nullopt;
    return say(phrases::hotKeyNeedsModifier);
}

std::optional<std::string> warningOf(const HotKey& hotKey) {
    const int key = hotKey.keyCode;
    const int modifiers = hotKey.command + hotKey.option + hotKey.control;
    if (hotKey.command) return say(phrases::hotKeyOfDesktop);
    if (hotKey.option && (isIn(key, tab, escape) || (!hotKey.shift && isIn(key, space, enter))))
        return say(phrases::hotKeyOfDesktop);
    if (hotKey.control && hotKey.option && (isFunctionKey(key) || isIn(key, deleteKey, letterL, letterT)))
        return say(phrases::hotKeyOfDesktop);
    if (hotKey.option && modifiers == 1 && isFunctionKey(key)) return say(phrases::hotKeyOfDesktop);
    if (modifiers == 1 && !hotKey.shift) return say(phrases::hotKeyOfPrograms);
    return std::nullopt;
}

std::string nameOf(const HotKey& hotKey, const std::string& key) {
    std::string name;
    if (hotKey.command) name += "Super+";
    if (hotKey.control) name += "Ctrl+";
    if (hotKey.option) name += "Alt+";
    if (hotKey.shift) name += "Shift+";
    return name + key;
}

} // namespace quillmark
