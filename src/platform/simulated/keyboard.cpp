#include "platform/simulated/keyboard.h"

#include "platform/simulated/world.h"

#include <algorithm>

namespace simulated {
namespace {

// A layout of the keys below, in the order of their key codes.
KeyboardLayout layout(std::u16string_view characters) {
    static constexpr platform::CGKeyCode positions[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,
                                                        11, 12, 13, 14, 15, 16, 17, 31, 32, 34,
                                                        35, 37, 38, 40, 41, 43, 45, 46, 47, 49};
    KeyboardLayout made;
    for (std::size_t i = 0; i < characters.size(); ++i)
        made.keys[positions[i]] = characters.substr(i, 1);
    return made;
}

} // namespace

KeyboardLayout KeyboardLayout::us() { return layout(u"asdfhgzxcvbqwerytouipljk;,nm. "); }
KeyboardLayout KeyboardLayout::azerty() { return layout(u"qsdfhgwxcvbazerytouipljkm;n,: "); }
KeyboardLayout KeyboardLayout::dvorak() { return layout(u"aoeudi;qjkx',.pfyrgclnhtswbmv "); }

KeyboardLayout KeyboardLayout::usWithDeadC() {
    KeyboardLayout made = us();
    made.deadKeys = {8};
    return made;
}

KeyboardLayout KeyboardLayout::withoutC() {
    KeyboardLayout made = us();
    made.keys[8] = u"ç";
    return made;
}

KeyboardLayout KeyboardLayout::cyrillic() {
    KeyboardLayout made = layout(u"фыварпячсмийцукнещгшздолжбтью ");
    made.typesASCII = false;
    return made;
}

} // namespace simulated

namespace platform {

class UnicodeKeyLayout {
public:
    simulated::KeyboardLayout layout;
};

class InputSource {
public:
    simulated::KeyboardLayout layout;
};

TISInputSourceRef TISCopyCurrentASCIICapableKeyboardLayoutInputSource() {
    const auto& layouts = simulated::World::current().layouts;
    const auto found = std::ranges::find_if(layouts, &simulated::KeyboardLayout::typesASCII);
    return found != layouts.end() ? std::make_shared<InputSource>(InputSource{*found}) : nullptr;
}

UnicodeKeyLayoutRef TISGetInputSourceProperty(const TISInputSourceRef& source, InputSourceProperty) {
    if (!source->layout.hasData) return nullptr;
    return std::make_shared<UnicodeKeyLayout>(UnicodeKeyLayout{source->layout});
}

std::uint8_t LMGetKbdType() { return 40; }

// These layouts have one level: a key pressed together with modifiers is not translated.
std::optional<std::u16string> UCKeyTranslate(const UnicodeKeyLayout& layout, CGKeyCode keyCode, KeyAction,
                                             std::uint32_t modifierState, std::uint8_t, std::uint32_t,
                                             std::uint32_t& deadKeyState, std::size_t maximumLength) {
    if (modifierState != 0 || layout.layout.brokenKeys.contains(keyCode)) return std::nullopt;
    if (layout.layout.deadKeys.contains(keyCode)) {
        deadKeyState = 1u + keyCode;
        return std::u16string{};
    }
    const auto found = layout.layout.keys.find(keyCode);
    return found != layout.layout.keys.end() ? found->second.substr(0, maximumLength) : std::u16string{};
}

} // namespace platform
