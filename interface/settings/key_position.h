// Where a key lies on the keyboard, as the host's hot key names it (docs/channels.md) and as the kernel does.
#pragma once

#include <optional>

namespace quillmark {

// `position` is one of <linux/input-event-codes.h>; an X key code is 8 more. Absent: the host knows no such
// key.
std::optional<int> keyCodeAt(unsigned position);
std::optional<unsigned> positionOf(int keyCode);

} // namespace quillmark
