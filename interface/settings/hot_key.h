// Which combinations will do as the hot key.
#pragma once

#include "client/desktop.h"

#include <optional>
#include <string>

namespace quillmark {

// Why it cannot be the hot key: a sentence. Absent: it can.
std::optional<std::string> refusalOf(const HotKey& hotKey);

// What the person gives up with it: a sentence. Absent: nothing that is known.
std::optional<std::string> warningOf(const HotKey& hotKey);

// "Alt+Shift+Space"; `key` is what the person's keyboard calls the key.
std::string nameOf(const HotKey& hotKey, const std::string& key);

} // namespace quillmark
