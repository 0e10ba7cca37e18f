// What a hot key is called on the person's keyboard.
#pragma once

#include "client/desktop.h"

#include <string>

namespace quillmark {

// "Alt+Shift+Space"
std::string hotKeyName(const HotKey& hotKey);

} // namespace quillmark
