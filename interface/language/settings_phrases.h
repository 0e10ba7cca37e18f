// What the settings say.
#pragma once

#include "language/phrase.h"

namespace quillmark::phrases {

// The hot key.
inline constexpr Phrase hotKeyNeedsModifier{
    "Hold Ctrl, Alt or Super with the key: it would be missed wherever you write, otherwise.",
    "Ctrl, Alt, Super 중 하나를 함께 누르세요. 그러지 않으면 글을 쓸 때 그 키를 쓸 수 없게 됩니다."};
inline constexpr Phrase hotKeyOfDesktop{
    "Many desktops use this combination themselves; then only one of the two works.",
    "많은 데스크톱이 이 조합을 사용합니다. 그럴 때는 둘 중 하나만 작동합니다."};
inline constexpr Phrase hotKeyOfPrograms{
    "Programs use this combination themselves; as long as it is the hot key, they do not get it.",
    "프로그램들이 이 조합을 사용합니다. 단축키로 쓰는 동안에는 프로그램에 전달되지 않습니다."};

} // namespace quillmark::phrases
