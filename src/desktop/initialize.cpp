// "initialize": which applications the interface excludes from capture, and which hot key it wants.
#include "desktop/desktop_bridge.h"
#include "flutter/arguments.h"
#include "platform/hot_key.h"
#include "text/text.h"

using flutter::EncodableMap;
using flutter::member;

namespace {

constexpr std::uint32_t spaceKey = 49;

// Option and Shift are on unless they are switched off, Command and Control off unless they are switched on.
HotKeySpec hotKeySpec(const EncodableMap* hotkey) {
    const auto on = [&](std::string_view name, bool otherwise) {
        return flutter::asBool(member(hotkey, name)).value_or(otherwise);
    };
    HotKeySpec spec{flutter::asUInt32(member(hotkey, "keyCode")).value_or(spaceKey), 0};
    if (on("control", false)) spec.modifiers |= platform::controlKey;
    if (on("option", true)) spec.modifiers |= platform::optionKey;
    if (on("command", false)) spec.modifiers |= platform::cmdKey;
    if (on("shift", true)) spec.modifiers |= platform::shiftKey;
    return spec;
}

std::set<std::string> lowerCased(const std::optional<std::vector<std::string>>& identifiers) {
    std::set<std::string> lowered;
    if (!identifiers) return lowered;
    for (const auto& identifier : *identifiers)
        lowered.insert(text::lowercased(identifier));
    return lowered;
}

} // namespace

void DesktopBridge::initialize(Arguments arguments, Result result) {
    const auto* map = flutter::asMap(arguments);
    excluded_ = lowerCased(flutter::asStringList(member(map, "excluded_apps")));
    const auto spec = hotKeySpec(flutter::asMap(member(map, "hotkey")));
    const bool registered = registerHotkey(spec.key, spec.modifiers);
    initialized_ = true;
    result.success(EncodableMap{{"hotkey_registered", registered}});
}
