// Where a key lies on the keyboard, as the host's hot key names it (docs/channels.md) and as the kernel does.
#pragma once

#include <optional>

namespace quillmark {

// How much higher the X server's key code of a position is.
inline constexpr unsigned firstXKeyCode = 8;

// `position` is one of <linux/input-event-codes.h>. Absent: the host knows no such key.
std::optional<int> keyCodeAt(unsigned position);
std::optional<unsigned> positionOf(int keyCode);

} // namespace quillmark
