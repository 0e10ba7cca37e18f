#include "settings/key_position.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

namespace quillmark {

namespace {

struct Place {
    int keyCode;
    unsigned position;
};

constexpr std::array places{
    // clang-format off
    Place{0, KEY_A}, Place{1, KEY_S}, Place{2, KEY_D}, Place{3, KEY_F}, Place{4, KEY_H}, Place{5, KEY_G},
    Place{6, KEY_Z}, Place{7, KEY_X}, Place{8, KEY_C}, Place{9, KEY_V}, Place{11, KEY_B}, Place{12, KEY_Q},
    Place{13, KEY_W}, Place{14, KEY_E}, Place{15, KEY_R}, Place{16, KEY_Y}, Place{17, KEY_T}, Place{31, KEY_O},
    Place{32, KEY_U}, Place{34, KEY_I}, Place{35, KEY_P}, Place{37, KEY_L}, Place{38, KEY_J}, Place{40, KEY_K},
    Place{45, KEY_N}, Place{46, KEY_M},
    Place{18, KEY_1}, Place{19, KEY_2}, Place{20, KEY_3}, Place{21, KEY_4}, Place{23, KEY_5}, Place{22, KEY_6},
    Place{26, KEY_7}, Place{28, KEY_8}, Place{25, KEY_9}, Place{29, KEY_0},
    Place{24, KEY_EQUAL}, Place{27, KEY_MINUS}, Place{30, KEY_RIGHTBRACE}, Place{33, KEY_LEFTBRACE},
    Place{39, KEY_APOSTROPHE}, Place{41, KEY_SEMICOLON}, Place{42, KEY_BACKSLASH}, Place{43, KEY_COMMA},
    Place{44, KEY_SLASH}, Place{47, KEY_DOT}, Place{50, KEY_GRAVE},
    Place{36, KEY_ENTER}, Place{48, KEY_TAB}, Place{49, KEY_SPACE}, Place{51, KEY_BACKSPACE}, Place{53, KEY_ESC},
    Place{117, KEY_DELETE}, Place{114, KEY_INSERT}, Place{115, KEY_HOME}, Place{119, KEY_END},
    Place{116, KEY_PAGEUP}, Place{121, KEY_PAGEDOWN}, Place{123, KEY_LEFT}, Place{124, KEY_RIGHT},
    Place{125, KEY_DOWN}, Place{126, KEY_UP},
    Place{122, KEY_F1}, Place{120, KEY_F2}, Place{99, KEY_F3}, Place{118, KEY_F4}, Place{96, KEY_F5},
    Place{97, KEY_F6}, Place{98, KEY_F7}, Place{100, KEY_F8}, Place{101, KEY_F9}, Place{109, KEY_F10},
    Place{103, KEY_F11}, Place{111, KEY_F12},
    // clang-format on
};

} // namespace

std::optional<int> keyCodeAt(unsigned position) {
    const auto found = std::find_if(places.begin(), places.end(),
                                    [&](const Place& place) { return place.position == position; });
    return found == places.end() ? std::nullopt : std::optional(found->keyCode);
}

std::optional<unsigned> positionOf(int keyCode) {
    const auto found = std::find_if(places.begin(), places.end(),
                                    [&](const Place& place) { return place.keyCode == keyCode; });
    return found == places.end() ? std::nullopt : std::optional(found->position);
}

} // namespace quillmark
