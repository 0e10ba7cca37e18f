#include "settings/key_position.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

namespace quillmark {

namespace {

struct Key {
    int keyCode;
    unsigned position;
};

constexpr std::array keys{
    // clang-format off
    Key{0, KEY_A}, Key{1, KEY_S}, Key{2, KEY_D}, Key{3, KEY_F}, Key{4, KEY_H}, Key{5, KEY_G},
    Key{6, KEY_Z}, Key{7, KEY_X}, Key{8, KEY_C}, Key{9, KEY_V}, Key{11, KEY_B}, Key{12, KEY_Q},
    Key{13, KEY_W}, Key{14, KEY_E}, Key{15, KEY_R}, Key{16, KEY_Y}, Key{17, KEY_T}, Key{31, KEY_O},
    Key{32, KEY_U}, Key{34, KEY_I}, Key{35, KEY_P}, Key{37, KEY_L}, Key{38, KEY_J}, Key{40, KEY_K},
    Key{45, KEY_N}, Key{46, KEY_M},
    Key{18, KEY_1}, Key{19, KEY_2}, Key{20, KEY_3}, Key{21, KEY_4}, Key{23, KEY_5}, Key{22, KEY_6},
    Key{26, KEY_7}, Key{28, KEY_8}, Key{25, KEY_9}, Key{29, KEY_0},
    Key{24, KEY_EQUAL}, Key{27, KEY_MINUS}, Key{30, KEY_RIGHTBRACE}, Key{33, KEY_LEFTBRACE},
    Key{39, KEY_APOSTROPHE}, Key{41, KEY_SEMICOLON}, Key{42, KEY_BACKSLASH}, Key{43, KEY_COMMA},
    Key{44, KEY_SLASH}, Key{47, KEY_DOT}, Key{50, KEY_GRAVE},
    Key{36, KEY_ENTER}, Key{48, KEY_TAB}, Key{49, KEY_SPACE}, Key{51, KEY_BACKSPACE}, Key{53, KEY_ESC},
    Key{117, KEY_DELETE}, Key{114, KEY_INSERT}, Key{115, KEY_HOME}, Key{119, KEY_END},
    Key{116, KEY_PAGEUP}, Key{121, KEY_PAGEDOWN}, Key{123, KEY_LEFT}, Key{124, KEY_RIGHT},
    Key{125, KEY_DOWN}, Key{126, KEY_UP},
    Key{122, KEY_F1}, Key{120, KEY_F2}, Key{99, KEY_F3}, Key{118, KEY_F4}, Key{96, KEY_F5},
    Key{97, KEY_F6}, Key{98, KEY_F7}, Key{100, KEY_F8}, Key{101, KEY_F9}, Key{109, KEY_F10},
    Key{103, KEY_F11}, Key{111, KEY_F12},
    // clang-format on
};

} // namespace

std::optional<int> keyCodeAt(unsigned position) {
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&](const Key& key) { return key.position == position; });
    return found == keys.end() ? std::nullopt : std::optional(found->keyCode);
}

std::optional<unsigned> positionOf(int keyCode) {
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&](const Key& key) { return key.keyCode == keyCode; });
    return found == keys.end() ? std::nullopt : std::optional(found->position);
}

} // namespace quillmark
